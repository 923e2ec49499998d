import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

/// What nobody expects to copy: nothing of it leaves the place that it has.
Item {
    id: root

    width: 480
    height: 560

    Component {
        id: frame
        PreviewFrame {}
    }
    Component {
        id: text
        TextPreviewPopover {}
    }
    Component {
        id: message
        SavedSnippetPreviewPopover {}
    }
    Component {
        id: card
        NavigationHUDView {}
    }

    PanelTestCase {
        id: test

        readonly property var extremes: [
            { tag: "no spaces", text: "x".repeat(1000) },
            { tag: "words", text: "palavra comprida ".repeat(60) },
            { tag: "lines", text: "linha\n".repeat(300) },
            { tag: "Arabic", text: "مرحبا بالعالم، هذا نص عربي طويل بما يكفي: الطلب 12345 من Nettlecap ".repeat(9) },
            { tag: "Hebrew", text: "שלום 123 Nettlecap עולם ".repeat(30) },
            { tag: "emoji", text: "👩‍👩‍👧‍👦👍🏽🇧🇷".repeat(90) },
            { tag: "piled marks", text: "a" + "̈".repeat(80) + " fim" },
            { tag: "controls", text: "a\rb\u0085c\td\u0000e\u2028f\u2029g\u001bh" },
            { tag: "spaces", text: " ".repeat(1000) }
        ]
        readonly property var messages: extremes.filter(extreme => extreme.tag !== "spaces")
        property Item made: null
        property Item preview: null

        name: "Extremes"

        function cleanup() {
            made?.destroy();
            made = null;
            preview?.destroy();
            preview = null;
            content?.destroy();
            content = null;
            wait(0);
        }
        /// What leaves the item; what is scrolled, upwards and downwards, doesn't count.
        function outside(within, from = within, scrolls = false, found = []) {
            for (let index = 0; index < from.children.length; ++index) {
                const item = from.children[index];
                if (!item.visible)
                    continue;
                const place = inkOf(item, within);
                if (place.x < -1 || place.right > within.width + 1 || !scrolls && (place.y < -1 || place.bottom > within.height + 1))
                    found.push(`${item} ${place}`);
                outside(within, item, scrolls || item instanceof Flickable, found);
            }
            return found;
        }
        function inkOf(item, within) {
            if (!(item instanceof Text))
                return item.mapToItem(within, 0, 0, item.width, item.height);
            const start = item.effectiveHorizontalAlignment === Text.AlignRight ? item.width - item.contentWidth : 0;
            return item.mapToItem(within, start, 0, item.contentWidth, item.contentHeight);
        }
        function make(kind, properties) {
            made = kind.createObject(root, properties);
            made.width = made.implicitWidth;
            made.height = made.implicitHeight;
            verify(waitForRendering(made, patience));
            return made;
        }
        function checkRow(row) {
            compare(row.height, 50);
            verify(row.clip);
            compare(outside(row), []);
            const button = items(row, item => item instanceof FlatButton)[0];
            for (const line of texts(row)) {
                compare(line.lineCount, 1);
                verify(line.mapToItem(row, line.contentWidth, 0).x <= button.x + 1 || line.effectiveHorizontalAlignment === Text.AlignRight);
            }
        }

        function test_row_data() {
            return extremes;
        }
        function test_row(data) {
            History.addFrom("Programa de nome muito comprido ".repeat(9), data.text);
            show();
            checkRow(rows()[0]);
        }
        function test_messageRow_data() {
            return messages;
        }
        function test_messageRow(data) {
            History.addSnippet(data.text, data.text);
            show();
            keyClick(Qt.Key_Right);
            verify(waitForRendering(content, patience));
            checkRow(rows()[0]);
        }
        function test_preview_data() {
            return extremes.filter(extreme => !["spaces", "piled marks"].includes(extreme.tag));
        }
        function test_preview(data) {
            History.add(data.text, 1);
            show();
            keyClick(Qt.Key_Down);
            History.advance(0.2);
            preview = text.createObject(root, { view: rows()[0].row.preview });
            make(frame, { content: preview });
            compare(outside(made), []);
            compare(preview.width, 420);
            verify(made.height <= root.Screen.height / 2);
        }
        function test_messagePreview_data() {
            return messages;
        }
        function test_messagePreview(data) {
            History.addSnippet("a", data.text);
            show();
            keyClick(Qt.Key_Right);
            verify(waitForRendering(content, patience));
            keyClick(Qt.Key_Down);
            History.advance(0.2);
            preview = message.createObject(root, { view: rows()[0].row.preview });
            make(frame, { content: preview });
            compare(outside(made), []);
        }
        function test_alert_data() {
            return extremes;
        }
        function test_alert(data) {
            History.add(data.text, 1);
            show();
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Delete);
            const box = items(alert(), item => item instanceof Rectangle && item.width === 300)[0];
            verify(box.clip);
            compare(outside(box), []);
            compare(outside(content), []);
        }
        function test_editor_data() {
            return messages;
        }
        function test_editor(data) {
            History.addSnippet(data.text, data.text);
            show();
            keyClick(Qt.Key_Right);
            verify(waitForRendering(content, patience));
            rows()[0].row.edit();
            const editor = sheet();
            verify(waitForRendering(editor, patience));
            compare(items(editor, item => item instanceof Text && outside(editor).includes(item)), []);
            compare(editor.width, 440);
            verify(editor.height < content.height);
        }
        function test_card_data() {
            return extremes;
        }
        function test_card(data) {
            make(card, { view: Cards.ofText(data.text) });
            if (made.height > 260) {
                made.height = 260;
                verify(waitForRendering(made, patience));
            }
            compare(outside(made), []);
        }
        function test_aLongErrorStaysOnItsLine() {
            History.add("um", 1);
            show();
            History.failToSave("disco cheio ".repeat(90));
            const line = visibleItems(item => item instanceof MessageLine)[0];
            compare(outside(line), []);
            compare(texts(line)[0].lineCount, 1);
        }
        function test_picture_data() {
            return [
                { tag: "dot", width: 1, height: 1 },
                { tag: "wide", width: 20000, height: 10 },
                { tag: "high", width: 10, height: 20000 }
            ];
        }
        function test_picture(data) {
            Cards.savePicture(data.tag + ".png", data.width, data.height);
            History.addPicture(data.tag + ".png");
            show();
            checkRow(rows()[0]);
            const tile = items(rows()[0], item => item instanceof Image)[0];
            tryCompare(tile, "status", Image.Ready, patience);
            compare(Qt.size(tile.width, tile.height), Qt.size(38, 38));
            compare(tile.sourceSize, Qt.size(38, 38));  // no more than that is kept
        }
        function test_onlyTheRowsNearTheSightExist() {
            for (let index = 0; index < 150; ++index)
                History.addFrom("Notas", "linha " + index);
            show();
            for (let page = 0; page < 18; ++page) {
                list().contentY = page * 400;
                list().forceLayout();
            }
            wait(0);
            const kept = items(list().contentItem, item => item instanceof ListRow).length;
            verify(kept > 8 && kept < 30, kept + " rows");
        }
        function test_aPictureWhoseFileIsGoneHasASymbol() {
            History.addPicture("sumiu.png");
            show();
            checkRow(rows()[0]);
            tryCompare(items(rows()[0], item => item instanceof Image)[0], "status", Image.Error, patience);
            verify(items(rows()[0], item => item instanceof Symbol && item.name === "photo")[0].visible);
        }
    }
}
