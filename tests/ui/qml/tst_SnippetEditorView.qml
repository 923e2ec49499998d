import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 440
    height: 400

    Component {
        id: sheet
        SnippetEditorView {}
    }

    TestCase {
        id: test

        readonly property int patience: 30000  // milliseconds
        property Item content

        name: "SnippetEditorView"
        when: windowShown

        function init() {
            Settings.startAfresh();
        }
        function cleanup() {
            content.destroy();
            wait(0);
        }
        function open(title, text) {
            content = sheet.createObject(root, { view: Settings.makeEditor(title, text) });
            content.forceActiveFocus();
            verify(waitForRendering(content, patience));
        }
        function items(from, matches, found = []) {
            if (matches(from))
                found.push(from);
            for (let index = 0; index < from.children.length; ++index)
                items(from.children[index], matches, found);
            return found;
        }
        function titleField() {
            return items(content, item => item instanceof TextInput)[0];
        }
        function contentField() {
            return items(content, item => item instanceof TextEdit)[0];
        }
        function button(text) {
            return items(content, item => item instanceof PushButton && item.text === text)[0];
        }
        function type(text) {
            for (const letter of text)
                keyClick(letter);
        }

        function test_aNewMessageIsTypedAndSaved() {
            open("", "");
            verify(titleField().activeFocus);
            type("oi");
            keyClick(Qt.Key_Tab);
            type("bom dia");
            mouseClick(button("Salvar"));
            compare(Settings.saved, "oi|bom dia");
            verify(!Settings.isOpen);
        }
        function test_measuresAreThoseOfTheSheet() {
            open("", "");
            compare(content.width, 440);
            compare(titleField().mapToItem(content, 0, 0).x, 28);
            verify(items(content, item => item instanceof PlainTextArea)[0].height >= 180);
            verify(items(content, item => item instanceof Text && item.visible).map(item => item.text).includes("Título"));
        }
        function test_blanksAloneCannotBeSaved() {
            open("", "");
            contentField().forceActiveFocus();
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Return);
            verify(!button("Salvar").enabled);
            mouseClick(button("Salvar"));
            verify(Settings.isOpen);
            type("x");
            verify(button("Salvar").enabled);
        }
        function test_returnSavesFromTheTitle() {
            open("a", "b");
            keyClick(Qt.Key_Return);
            compare(Settings.saved, "a|b");
        }
        function test_returnIsALineBreakInTheContent() {
            open("a", "b");
            contentField().forceActiveFocus();
            contentField().cursorPosition = 1;
            keyClick(Qt.Key_Return);
            verify(Settings.isOpen);
            type("c");
            compare(content.view.content, "b\nc");
        }
        function test_returnOnCancelarSavesAndSpaceCancels() {
            open("a", "b");
            button("Cancelar").forceActiveFocus();
            keyClick(Qt.Key_Return);
            compare(Settings.saved, "a|b");
            Settings.saved = "";
            keyClick(Qt.Key_Space);
            compare(Settings.saved, "");
            verify(!Settings.isOpen);
        }
        function test_escapeCancelsFromEverywhere_data() {
            return [{ tag: "title", place: titleField }, { tag: "content", place: contentField }, { tag: "button", place: () => button("Salvar") }];
        }
        function test_escapeCancelsFromEverywhere(data) {
            open("a", "b");
            data.place().forceActiveFocus();
            type("x");
            keyClick(Qt.Key_Escape);
            verify(!Settings.isOpen);
            compare(Settings.saved, "");
        }
        function test_whatIsNotTouchedIsSavedAsItWas() {
            const odd = " a\u00a0b\r\nc\u2028d\t ";
            open("a", odd);
            type("x");
            keyClick(Qt.Key_Return);
            compare(Settings.saved.slice(-odd.length), odd);
        }
        function test_aNoBreakSpaceSurvivesEditing() {
            open("a", "10\u00a0kg");
            contentField().forceActiveFocus();
            contentField().cursorPosition = 0;
            type("x");
            compare(content.view.content, "x10\u00a0kg");
        }
        function test_pastesFromOurPasteboard_data() {
            return [
                { tag: "Ctrl+V", key: Qt.Key_V, modifiers: Qt.ControlModifier },
                { tag: "Shift+Insert", key: Qt.Key_Insert, modifiers: Qt.ShiftModifier }
            ];
        }
        function test_pastesFromOurPasteboard(data) {
            Settings.copyOutside("um\ndois");
            open("antes depois", "xyz");
            titleField().select(0, 5);
            keyClick(data.key, data.modifiers);
            compare(content.view.title, "um dois depois");
            contentField().forceActiveFocus();
            contentField().select(1, 2);
            keyClick(data.key, data.modifiers);
            compare(content.view.content, "xum\ndoisz");
            compare(contentField().cursorPosition, 8);
        }
        function test_aPasteCanBeUndone() {
            Settings.copyOutside("um");
            open("a", "xyz");
            contentField().forceActiveFocus();
            contentField().selectAll();
            keyClick(Qt.Key_V, Qt.ControlModifier);
            compare(content.view.content, "um");
            contentField().undo();
            contentField().undo();
            compare(content.view.content, "xyz");
        }
        function test_anEmptyPasteboardChangesNothing() {
            open("a", "xyz");
            titleField().selectAll();
            keyClick(Qt.Key_V, Qt.ControlModifier);
            compare(content.view.title, "a");
        }
        function test_theMiddleButtonPastesNothing() {
            open("a", "xyz");
            mouseClick(titleField(), 10, 5, Qt.MiddleButton);
            mouseClick(contentField(), 10, 5, Qt.MiddleButton);
            compare(content.view.title + content.view.content, "axyz");
        }
        function test_theKeyboardLeavesTheContent() {
            open("a", "b");
            contentField().forceActiveFocus();
            keyClick(Qt.Key_Tab);
            compare(content.view.content.includes("\t"), true);
            keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
            verify(titleField().activeFocus);
            keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
            verify(button("Salvar").activeFocus);
            keyClick(Qt.Key_Backtab, Qt.ShiftModifier);
            verify(button("Cancelar").activeFocus);
        }
    }
}
