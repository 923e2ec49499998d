import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 480
    height: 330

    Component {
        id: card
        NavigationHUDView {}
    }

    TestCase {
        id: test

        readonly property int patience: 30000  // milliseconds
        property Item shown

        name: "NavigationHUDView"
        when: windowShown

        function cleanup() {
            shown.destroy();
            wait(0);
        }
        /// As high as its content needs, but no higher than the panel lets it be.
        function show(view) {
            shown = card.createObject(root, {
                view: view,
                width: view.panelWidth
            });
            shown.height = view.isImage ? 330 : Math.min(shown.implicitHeight, 260);
            verify(waitForRendering(shown, patience));
        }
        function items(matches, from = shown, found = []) {
            if (matches(from))
                found.push(from);
            for (let index = 0; index < from.children.length; ++index)
                items(matches, from.children[index], found);
            return found;
        }
        function texts() {
            return items(item => item instanceof Text && item.visible);
        }
        function symbol() {
            return items(item => item instanceof Symbol && item.visible)[0];
        }
        function tile() {
            return items(item => item instanceof CardTile)[0];
        }
        function picture() {
            return items(item => item instanceof Image)[0];
        }
        function place(item) {
            return shown.mapFromItem(item, 0, 0, item.width, item.height);
        }

        function test_aShortTextHasALargeTileAndAHeadline() {
            show(Cards.ofText("um"));
            compare(shown.implicitWidth, 440);
            compare(place(tile()), Qt.rect(22, 22, 56, 56));
            compare(shown.implicitHeight, 56 + 2 * 22);
            compare(texts()[0].font.weight, Font.DemiBold);
            compare(texts()[0].lineHeight, 1);
            compare(symbol().name, "doc.text");
            compare(symbol().color, Theme.colors.card.accent);
        }
        function test_anExpandedTextHasASmallTileAndTheBodyFont() {
            show(Cards.ofText("um\ndois"));
            compare(shown.implicitWidth, 480);
            compare(place(tile()), Qt.rect(22, 22, 48, 48));
            compare(texts()[0].font.weight, Font.Normal);
            compare(texts()[0].font.pointSize, Theme.body.pointSize);
        }
        function test_expandedLinesStandTwoPointsFurtherApart() {
            show(Cards.ofText("um\ndois\ntrês"));
            const text = texts()[0];
            const apart = text.implicitHeight;
            text.lineHeight = 1;
            fuzzyCompare((apart - text.implicitHeight) / 3, 2, 0.5);
        }
        function test_textAndCaptionStandAtTheTopBesideTheTile() {
            show(Cards.ofText("um"));
            const [text, caption] = texts();
            compare(place(text).y, 22);
            verify(place(text).x > 22 + 56);
            compare(place(text).x + place(text).width, 440 - 22);
            compare(place(caption).x, place(text).x);
            verify(place(caption).y >= place(text).y + text.contentHeight);
        }
        function test_theCaptionTellsThePlaceAndWhatLettingGoDoes() {
            show(Cards.ofText("um"));
            compare(texts()[1].text, "Item 3 de 12 • solte as teclas para colar");
            compare(texts()[1].Accessible.name, "Item 3 de 12 • solte as teclas para colar");
            compare(texts()[1].font.pointSize, Theme.caption.pointSize);
            compare(texts()[1].color, Theme.colors.secondaryText);
            verify(!texts()[1].truncated);
        }
        function test_aProtectedSecretIsMaskedAndLocked() {
            show(Cards.ofSecret("segredo\n".repeat(50), true));
            compare(texts()[0].text, "se••••••••••••");
            compare(symbol().name, "lock.fill");
            compare(symbol().color, Theme.colors.card.sensitive);
            compare(shown.implicitWidth, 440);
        }
        function test_anUnprotectedSecretIsShown() {
            show(Cards.ofSecret("segredo", false));
            compare(texts()[0].text, "segredo");
            compare(symbol().name, "doc.text");
        }
        function test_linesBeyondTheLimitAreCutAtTheTail_data() {
            return [
                {
                    tag: "four",
                    text: "um\ndois",
                    limit: 4,
                    lines: 2
                },
                {
                    tag: "five",
                    text: "1\n2\n3\n4\n5",
                    limit: 5,
                    lines: 5
                },
                {
                    tag: "nine",
                    text: "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11",
                    limit: 9,
                    lines: 9
                },
                {
                    tag: "one word",
                    text: "x".repeat(3000),
                    limit: 9,
                    lines: 9
                },
                {
                    tag: "carriage returns",
                    text: "1\r\n2\r\n3\r\n4\r\n5\r\n6",
                    limit: 4,
                    lines: 4
                }
            ];
        }
        function test_linesBeyondTheLimitAreCutAtTheTail(data) {
            show(Cards.ofText(data.text));
            compare(texts()[0].maximumLineCount, data.limit);
            compare(texts()[0].lineCount, data.lines);
            compare(texts()[0].elide, Text.ElideRight);
        }
        function test_nothingOverflows_data() {
            return [
                {
                    tag: "long",
                    text: "palavra ".repeat(400)
                },
                {
                    tag: "one word",
                    text: "x".repeat(3000)
                },
                {
                    tag: "short word",
                    text: "W".repeat(180)
                },
                {
                    tag: "emoji",
                    text: "👩‍👩‍👧‍👦".repeat(400)
                },
                {
                    tag: "right to left",
                    text: "هذا نص عربي طويل ".repeat(50)
                },
                {
                    tag: "lines",
                    text: "linha\n".repeat(100)
                },
                {
                    tag: "tall letters",
                    text: "Ấ̂̃ Ǻ̈́ ".repeat(100)
                }
            ];
        }
        function test_nothingOverflows(data) {
            show(Cards.ofText(data.text));
            const [text, caption] = texts();
            verify(place(text).x + text.contentWidth <= shown.width - 22);
            verify(place(text).y + text.contentHeight <= place(caption).y + 1);
            verify(place(caption).y + caption.height <= shown.height - 22 + 1, "ends at " + (place(caption).y + caption.height) + " of " + shown.height);
            verify(shown.height <= 260);
        }
        function test_markupIsShownAsItStands() {
            show(Cards.ofText("<b>um</b>"));
            compare(texts()[0].textFormat, Text.PlainText);
        }
        function test_aPictureFillsItsBox() {
            Cards.savePicture("gato.png", 800, 600);
            show(Cards.ofPicture("gato.png"));
            tryVerify(() => picture().status === Image.Ready, patience);
            compare(shown.implicitWidth, 480);
            compare(place(picture()), Qt.rect(22, 22, 436, 240));
            compare(picture().sourceSize, Qt.size(436, 240));
            verify(!picture().cache);
            compare(symbol(), undefined);
            compare(texts().map(text => text.text), ["Imagem copiada", "Item 3 de 12 • solte as teclas para colar"]);
            const caption = texts()[1];
            verify(place(caption).y + caption.height <= 330 - 22, "ends at " + (place(caption).y + caption.height));
        }
        function test_aPictureIsReadAnewEachTime() {
            Cards.savePicture("novo.png", 80, 60);
            show(Cards.ofPicture("novo.png"));
            tryVerify(() => picture().status === Image.Ready, patience);
            shown.destroy();
            wait(0);
            Cards.savePicture("novo.png", 436, 240);
            show(Cards.ofPicture("novo.png"));
            tryVerify(() => picture().status === Image.Ready, patience);
            const image = grabImage(shown);
            compare(image.red(22 + 30, 22 + 120), 255);
            compare(image.green(22 + 30, 22 + 120), 0);
        }
        function test_nothingIsMissingWhileAPictureIsBeingDecoded() {
            Cards.savePicture("grande.png", 3000, 2000);
            show(Cards.ofPicture("grande.png"));
            for (let turn = 0; picture().status === Image.Loading; ++turn) {
                verify(symbol() === undefined);
                wait(0);
            }
            compare(picture().status, Image.Ready);
        }
        function test_aMissingPictureSaysSo_data() {
            return [
                {
                    tag: "gone",
                    file: "sumiu.png"
                },
                {
                    tag: "without a name",
                    file: ""
                }
            ];
        }
        function test_aMissingPictureSaysSo(data) {
            if (data.file !== "")
                ignoreWarning(/no picture/);
            show(Cards.ofPicture(data.file));
            tryVerify(() => symbol() !== undefined, patience);
            compare(symbol().name, "photo");
            compare(texts().map(text => text.text), ["Imagem indisponível", "Imagem copiada", "Item 3 de 12 • solte as teclas para colar"]);
            compare(items(item => item instanceof EmptyState).map(place)[0], Qt.rect(22, 22, 436, 240));
            compare(shown.implicitWidth, 480);
        }
        function test_itFollowsTheDesktopsAppearance() {
            show(Cards.ofText("um"));
            const light = Theme.colors.card.ground;
            Cards.setWindowColor("#202020");
            tryVerify(() => Theme.isDark, patience);
            verify(Theme.colors.card.ground.hslLightness < light.hslLightness);
            Cards.setWindowColor("#efefef");
            tryVerify(() => !Theme.isDark, patience);
        }
        function test_whereNothingIsTranslucentItIsOpaque() {
            show(Cards.ofText("um"));
            shown.isComposited = false;
            verify(waitForRendering(shown, patience));
            const image = grabImage(shown);
            compare(image.alpha(220, 10), 255);
            compare(image.pixel(220, 10), Theme.colors.card.ground);
            compare(image.alpha(0, 0), 255);
        }
    }
}
