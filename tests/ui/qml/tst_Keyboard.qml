import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 430
    height: 560

    PanelTestCase {
        name: "Keyboard"

        function focused() {
            return (sheet() ?? root).Window.activeFocusItem;
        }
        function waitForSheet() {
            tryVerify(() => focused() instanceof TextInput, patience);
        }
        function isWithin(item, ancestor) {
            for (; item; item = item.parent)
                if (item === ancestor)
                    return true;
            return false;
        }
        function rings() {
            return visibleItems(item => item instanceof FocusRing && item.opacity > 0);
        }
        function pressTab(modifiers) {
            keyClick(modifiers ? Qt.Key_Backtab : Qt.Key_Tab, modifiers);
        }

        function test_whereItIsCanBeSeen() {
            show();
            tryVerify(() => root.Window.active, patience);
            for (let step = 0; step < 7; ++step) {
                pressTab(Qt.NoModifier);
                if (isWithin(focused(), field()))
                    continue;  // its frame is thicker then
                compare(rings().length, 1, focused());
                verify(isWithin(rings()[0].control, focused()), focused());
            }
            verify(field().activeFocus);
            compare(rings().length, 0);
        }
        function test_itStaysInTheEditor_data() {
            return [{ tag: "forwards", modifiers: Qt.NoModifier }, { tag: "backwards", modifiers: Qt.ShiftModifier }];
        }
        function test_itStaysInTheEditor(data) {
            History.addSnippet("a", "b");
            show();
            keyClick(Qt.Key_Right);
            verify(waitForRendering(content, patience));
            mouseClick(button("Editar mensagem"));
            waitForSheet();
            for (let step = 0; step < 6; ++step) {
                verify(isWithin(focused(), sheet()), focused());
                pressTab(data.modifiers);
            }
        }
        function test_itLeavesTheContentForwardsToo() {
            show();
            keyClick(Qt.Key_Right);
            mouseClick(button("Adicionar"));
            waitForSheet();
            keyClick(Qt.Key_Tab);
            verify(focused() instanceof TextEdit);
            keyClick(Qt.Key_Tab, Qt.ControlModifier);
            compare(focused(), sheetButton("Cancelar"));
            pressTab(Qt.NoModifier);  // there is nothing to be saved
            verify(focused() instanceof TextInput);
        }
        function test_itGoesBackFromTheEditorToTheSearch() {
            show();
            keyClick(Qt.Key_Right);
            mouseClick(button("Adicionar"));
            waitForSheet();
            keyClick(Qt.Key_Escape);
            tryVerify(() => field().activeFocus, patience);
        }
    }
}
