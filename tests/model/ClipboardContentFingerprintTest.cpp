#include "model/ClipboardContentFingerprint.h"
#include "model/Records.h"

namespace nettlecap {
namespace {

TEST(ClipboardContentFingerprintTest, IsTheKindAndTheSHA256OfTheBytes) {
    EXPECT_EQ(ClipboardContentFingerprint::fingerprint("abc", ClipboardContentKind::text),
              "text:ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(ClipboardContentFingerprint::fingerprint("", ClipboardContentKind::image),
              "image:e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(ClipboardContentFingerprintTest, NeverTakesAnImageForAText) {
    EXPECT_NE(ClipboardContentFingerprint::fingerprint("abc", ClipboardContentKind::text),
              ClipboardContentFingerprint::fingerprint("abc", ClipboardContentKind::image));
}

TEST(ClipboardContentFingerprintTest, HashesEveryByte) {
    EXPECT_NE(imageFingerprint(std::string_view("a\0b", 3)), imageFingerprint(std::string_view("a\0c", 3)));
}

TEST(ClipboardContentFingerprintTest, IsOneForTextsThatDifferInLineEndsCompositionAndBlanks) {
    const std::string plain = textFingerprint("linha um\nlinha dois é");

    EXPECT_EQ(textFingerprint("linha um\nlinha dois é\r\n"), plain);
    EXPECT_EQ(textFingerprint("linha um\nlinha dois é\n\n"), plain);
    EXPECT_EQ(textFingerprint("linha um\r\nlinha dois é"), plain);
    EXPECT_EQ(textFingerprint("linha um\rlinha dois é"), plain);
    EXPECT_EQ(textFingerprint("\u3000 linha um\nlinha dois e\u0301\t"), plain);
}

TEST(ClipboardContentFingerprintTest, DiffersForTextsThatDifferInCase) {
    EXPECT_NE(textFingerprint("linha"), textFingerprint("LINHA"));
    EXPECT_NE(textFingerprint("a b"), textFingerprint("a  b"));
}

}  // namespace
}  // namespace nettlecap
