import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 430
    height: 560

    PanelTestCase {
        name: "PanelControls"

        function segments() {
            return visibleItems(item => item instanceof SectionSegment);
        }
        function tips() {
            return items(root.Window.contentItem, item => item instanceof HelpTip && item.visible).map(tip => tip.text);
        }

        function test_measuresAreThoseOfThePanel() {
            show();
            compare(Qt.size(content.implicitWidth, content.implicitHeight), Qt.size(430, 560));
            compare(visibleItems(item => item instanceof SectionPicker)[0].width, 150);
            const icon = visibleItems(item => item instanceof AppIcon)[0];
            compare(Qt.size(icon.width, icon.height), Qt.size(24, 24));
        }
        function test_theSearchFieldHasTheKeyboardAndKeepsIt() {
            History.add("um", 1);
            show();
            verify(field().activeFocus);
            mouseClick(rows()[0]);
            mouseClick(button("Monitorando"));
            mouseClick(segments()[1]);
            verify(field().activeFocus);
        }
        function test_whatIsTypedIsSearchedFor() {
            History.add("banana", 1);
            History.add("uva", 2);
            show();
            type("uv");
            tryVerify(() => rows().length === 1, patience);
            compare(shown(rows()[0])[0], "uva");
            type("x");
            verify(shown(content).includes("Nada encontrado"));
            keyClick(Qt.Key_Backspace);
            tryVerify(() => rows().length === 1, patience);
        }
        function test_backspaceAsksOnlyWhereARowIsSelected() {
            History.add("um", 1);
            show();
            type("u");
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Backspace);
            compare(alert().title, "Excluir item do histórico?");
            compare(field().text, "u");
        }
        function test_thePickerAndTheArrowsSwitchTheSection() {
            show();
            verify(shown(content).includes("Buscar no histórico"));
            mouseClick(segments()[1]);
            verify(segments()[1].isChosen);
            verify(shown(content).includes("Buscar no salvos"));
            keyClick(Qt.Key_Left);
            verify(segments()[0].isChosen);
            keyClick(Qt.Key_Right);
            verify(segments()[1].isChosen);
        }
        function test_arrowsSwitchFromWithinTheQuery() {
            show();
            type("ab");
            keyClick(Qt.Key_Right);
            keyClick(Qt.Key_Left);
            type("c");
            compare(field().text, "abc");
            verify(segments()[0].isChosen);
        }
        function test_theGearOpensTheSettings() {
            show();
            mouseClick(button("Ajustes"));
            verify(History.hasOpenedSettings());
        }
        function test_theMonitoringIsPausedAndGoesOn() {
            show();
            mouseClick(button("Monitorando"));
            verify(!History.isMonitoring());
            compare(button("Pausado").symbol, "pause.circle");
            verify(shown(content).includes("Monitoramento pausado"));
            mouseClick(button("Pausado"));
            verify(History.isMonitoring());
            compare(button("Monitorando").symbol, "record.circle");
        }
        function test_theFooterOffersWhatTheSectionCanDo() {
            show();
            compare(button("Limpar").symbol, "trash");
            keyClick(Qt.Key_Right);
            verify(!button("Limpar"));
            compare(button("Adicionar").symbol, "plus");
        }
        function test_theProgramIsLeftFromTheFooter() {
            show();
            mouseClick(button("Sair"));
            compare(History.quits(), 1);
        }
        function test_clearingIsDoneOnlyAfterAYes() {
            History.add("um", 1);
            History.addFavorite("dois", 2);
            show();
            mouseClick(button("Limpar"));
            compare(alert().title, "Limpar os itens não favoritados?");
            keyClick(Qt.Key_Return);
            verify(!alert());
            compare(History.entries(), 2);
            verify(field().activeFocus);
            mouseClick(button("Limpar"));
            mouseClick(button("Limpar histórico"));
            compare(History.entries(), 1);
            verify(field().activeFocus);
        }
        function test_deletingIsDoneOnlyAfterAYes() {
            History.add("um", 1);
            History.add("dois", 2);
            show();
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Delete);
            verify(shown(alert()).includes("Tem certeza de que deseja excluir permanentemente “um” do histórico?"));
            keyClick(Qt.Key_Escape);
            verify(!alert());
            compare(History.entries(), 2);
            keyClick(Qt.Key_Delete);
            mouseClick(button("Excluir"));
            compare(History.entries(), 1);
            verify(rows()[0].isSelected);
            verify(field().activeFocus);
        }
        function test_helpTextsAppearWhereThePointerRests() {
            show();
            mouseMove(button("Ajustes"), 10, 10);
            verify(!tips().length);
            tryVerify(() => tips().includes("Ajustes"), patience);
            mouseMove(content, 200, 300);
            tryVerify(() => !tips().length, patience);
        }
        function test_escapeIsLeftToTheWindow() {
            show();
            const seen = Qt.createQmlObject("import QtQuick; Item { property int count: 0; Keys.onEscapePressed: ++count }", root);
            content.parent = seen;
            content.forceActiveFocus();
            keyClick(Qt.Key_Escape);
            compare(seen.count, 1);
            content.parent = root;
            seen.destroy();
        }
    }
}
