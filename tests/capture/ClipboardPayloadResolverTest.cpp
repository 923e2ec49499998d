#include "capture/ClipboardPayloadResolver.h"

#include <gmock/gmock.h>

namespace nettlecap {
namespace {

const auto isTextFirst = ClipboardPayloadResolver::shouldCaptureTextFirst;

TEST(TextFirstTest, NeedsAText) {
    EXPECT_FALSE(isTextFirst(std::nullopt, "Notas", {}));
    EXPECT_FALSE(isTextFirst("", "Notas", {}));
    EXPECT_FALSE(isTextFirst("", "Pages", {}));

    EXPECT_TRUE(isTextFirst(" ", "Notas", {}));
}

TEST(TextFirstTest, HoldsForACopyWithoutAPicture) {
    EXPECT_TRUE(isTextFirst("olá", "Notas", {}));
    EXPECT_TRUE(
        isTextFirst("olá", std::nullopt, {"public.utf8-plain-text", "public.html", "public.file-url"}));
}

TEST(TextFirstTest, YieldsToEveryKindOfPicture) {
    for (const auto* type : {"public.png", "public.tiff", "public.jpeg", "public.heic", "public.heif",
                             "public.webp", "com.compuserve.gif"})
        EXPECT_FALSE(isTextFirst("olá", "Notas", {"public.utf8-plain-text", type})) << type;
}

TEST(TextFirstTest, DoesNotTakeABitmapOrADocumentForAPicture) {
    for (const auto* type : {"com.microsoft.bmp", "com.adobe.pdf", "public.svg-image", "PUBLIC.PNG"})
        EXPECT_TRUE(isTextFirst("olá", "Notas", {"public.utf8-plain-text", type})) << type;
}

TEST(TextFirstTest, HoldsForOfficeProgramsWhateverElseTheyOffer) {
    for (const auto* source :
         {"Microsoft Word", "Microsoft Excel", "Microsoft PowerPoint", "Pages", "Numbers", "Keynote"})
        EXPECT_TRUE(isTextFirst("olá", source, {"public.png", "public.tiff"})) << source;
}

TEST(TextFirstTest, KnowsOfficeProgramsInAnyCaseAndWithinALongerName) {
    for (const auto* source : {"microsoft word 2021", "MICROSOFT EXCEL", "O meu miCROSoft powerPOINT",
                               "WebPages", "numbers (beta)", "KEYNOTE", "\u212Aeynote"})
        EXPECT_TRUE(isTextFirst("olá", source, {"public.png"})) << source;
}

TEST(TextFirstTest, DoesNotTakeOtherProgramsForOfficePrograms) {
    for (const auto* source : {"Word", "Microsoft  Word", "Excel", "Microsoft Edge", "Page", "Number",
                               "Page\u017F", "Pa\u0301ges", ""})
        EXPECT_FALSE(isTextFirst("olá", source, {"public.png"})) << source;
    EXPECT_FALSE(isTextFirst("olá", std::nullopt, {"public.png"}));
}

}  // namespace
}  // namespace nettlecap
