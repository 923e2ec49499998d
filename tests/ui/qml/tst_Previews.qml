import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 460
    height: 560

    Component {
        id: text
        TextPreviewPopover {}
    }
    Component {
        id: image
        ImagePreviewPopover {}
    }
    Component {
        id: metadata
        EntryMetadataPopover {}
    }
    Component {
        id: message
        SavedSnippetPreviewPopover {}
    }

    PanelTestCase {
        id: test

        property Item preview

        name: "Previews"

        function cleanup() {
            preview.destroy();
            content.destroy();
            wait(0);
        }
        function open(kind) {
            keyClick(Qt.Key_Down);
            History.advance(0.2);
            preview = kind.createObject(root, { view: rows()[0].row.preview });
            preview.width = preview.implicitWidth;
            preview.height = preview.implicitHeight;
            verify(waitForRendering(preview, patience));
        }

        function test_ofALongText() {
            const words = "palavra comprida ".repeat(20);
            History.add(words, 1);
            show();
            open(text);
            compare(preview.implicitWidth, 420);
            compare(shown(preview), ["Texto copiado", words]);
            const body = texts(preview)[1];
            verify(body.contentWidth <= 420);
            verify(preview.implicitHeight >= body.y + body.height);
        }
        function test_ofManyLinesScrolls() {
            History.add("linha comprida ".repeat(10) + "\n".repeat(500), 1);
            show();
            open(text);
            verify(preview.implicitHeight < 450);
            verify(items(preview, item => item instanceof ListScrollBar)[0].visible);
        }
        function test_ofAShortText() {
            History.add("um", 5);
            show();
            open(metadata);
            compare(preview.implicitWidth, 230);
            compare(shown(preview), ["Copiado", "há 5 minutos"]);
            const symbol = items(preview, item => item instanceof Symbol)[0];
            compare(symbol.name, "clock");
            compare(symbol.width, 18);
        }
        function test_theAgeStaysCurrent() {
            History.add("um", 5);
            show();
            open(metadata);
            History.advance(60);
            compare(shown(preview)[1], "há 6 minutos");
        }
        function test_ofAPicture() {
            Cards.savePicture("grande.png", 900, 300);
            History.storePicture("grande.png");
            History.addPicture("grande.png");
            show();
            open(image);
            compare(shown(preview), ["Imagem copiada"]);
            const picture = items(preview, item => item instanceof Image)[0];
            compare(Qt.size(picture.width, picture.height), Qt.size(440, 320));
            tryCompare(picture, "status", Image.Ready, patience);
            const backdrop = items(preview, item => item instanceof Rectangle)[0];
            fuzzyCompare(backdrop.color.a, 0.04, 0.01);
            verify(backdrop.radius > 0);
        }
        function test_ofASavedMessage() {
            History.addSnippet("Assinatura", "Até logo,\nMaria");
            show();
            keyClick(Qt.Key_Right);
            verify(waitForRendering(content, patience));
            open(message);
            compare(preview.implicitWidth, 420);
            compare(shown(preview), ["Mensagem salva", "Até logo,\nMaria"]);
        }
    }
}
