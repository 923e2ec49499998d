import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 430
    height: 560

    PanelTestCase {
        name: "ContextMenu"

        function openMenu(row) {
            mouseClick(row, 150, 20, Qt.RightButton);
        }
        function choose(label) {
            const line = items(menu(), item => item instanceof ContextMenuLine && item.modelData.label === label)[0];
            mouseClick(line);
        }

        function test_ofAnEntry() {
            History.add("um", 1);
            show();
            openMenu(rows()[0]);
            compare(menuLines(), ["Colar agora", "Copiar", "Favoritar", "-", "Excluir…"]);
        }
        function test_itsRowIsMarked() {
            History.add("um", 1);
            History.add("dois", 2);
            show();
            openMenu(rows()[1]);
            compare(rows().map(row => row.hasMenu), [false, true]);
            keyClick(Qt.Key_Escape);
            compare(rows().map(row => row.hasMenu), [false, false]);
        }
        function test_ofAPicture() {
            Cards.savePicture("a.png", 40, 40);
            History.addPicture("a.png");
            show();
            openMenu(rows()[0]);
            compare(menuLines(), ["Colar agora", "Copiar", "Favoritar", "Ver imagem", "-", "Excluir…"]);
            choose("Ver imagem");
            verify(rows()[0].row.isShowingPreview);
        }
        function test_ofAMessage() {
            History.addSnippet("a", "b");
            show();
            keyClick(Qt.Key_Right);
            verify(waitForRendering(content, patience));
            openMenu(rows()[0]);
            compare(menuLines(), ["Colar agora", "Copiar", "Editar", "-", "Excluir"]);
            choose("Excluir");
            compare(History.snippets(), []);
            verify(field().activeFocus);
        }
        function test_aLineDoesWhatItSays() {
            History.add("um", 1);
            show();
            openMenu(rows()[0]);
            compare(History.pasteboard(), "");
            choose("Copiar");
            compare(History.pasteboard(), "um");
            verify(!menu());
            verify(field().activeFocus);
        }
        function test_excludingAsksFirst() {
            History.add("um", 1);
            show();
            openMenu(rows()[0]);
            choose("Excluir…");
            compare(History.entries(), 1);
            mouseClick(button("Excluir"));
            compare(History.entries(), 0);
            verify(field().activeFocus);
        }
        function test_opensForTheSelectedRowByKey_data() {
            return [
                {
                    tag: "menu key",
                    key: Qt.Key_Menu,
                    modifiers: Qt.NoModifier
                },
                {
                    tag: "shift F10",
                    key: Qt.Key_F10,
                    modifiers: Qt.ShiftModifier
                }
            ];
        }
        function test_opensForTheSelectedRowByKey(data) {
            History.add("um", 1);
            History.add("dois", 2);
            show();
            keyClick(data.key, data.modifiers);
            verify(!menu());
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            keyClick(data.key, data.modifiers);
            verify(menu());
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(History.pasteboard(), "dois");
            verify(field().activeFocus);
        }
        function test_theKeysStepOverTheDivider() {
            History.add("um", 1);
            show();
            openMenu(rows()[0]);
            for (let i = 0; i < 4; ++i)
                keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            verify(alert());
        }
        function test_escapeAndAClickBesideItCloseIt() {
            History.add("um", 1);
            show();
            openMenu(rows()[0]);
            keyClick(Qt.Key_Escape);
            verify(!menu());
            openMenu(rows()[0]);
            mouseClick(content, 20, 500);
            verify(!menu());
            verify(field().activeFocus);
            compare(History.pasteboard(), "");
        }
        function test_closesWithItsRow() {
            History.addSnippet("a", "b");
            show();
            keyClick(Qt.Key_Right);
            verify(waitForRendering(content, patience));
            openMenu(rows()[0]);
            rows()[0].row.performMenuItem(4);
            tryVerify(() => !menu(), patience);
            verify(field().activeFocus);
        }
        function test_staysWithinThePanel() {
            History.add("um", 1);
            show();
            mouseClick(rows()[0], rows()[0].width - 60, 40, Qt.RightButton);
            for (const line of items(menu(), item => item instanceof ContextMenuLine)) {
                const corner = line.mapToItem(content, line.width, line.height);
                verify(corner.x <= 430 && corner.y <= 560);
            }
        }
    }
}
