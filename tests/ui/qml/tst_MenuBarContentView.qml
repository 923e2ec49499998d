import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 430
    height: 560

    PanelTestCase {
        name: "MenuBarContentView"

        function test_namesTheProgram() {
            show();
            verify(shown(content).includes("Nettlecap"));
        }
        function test_anEmptyHistorySaysWhatItIsFor() {
            show();
            verify(shown(content).includes("Nenhuma cópia ainda"));
            verify(shown(content).includes("Textos e imagens copiados aparecerão aqui."));
        }
        function test_theFirstCopyReplacesTheEmptyState() {
            show();
            History.add("um", 0);
            tryVerify(() => rows().length === 1, patience);
            verify(!shown(content).includes("Nenhuma cópia ainda"));
        }
        function test_aRowShowsWhatWhereAndWhen() {
            History.add("um", 5);
            show();
            compare(shown(rows()[0]), ["um", "Notas", " · há 5 minutos"]);
        }
        function test_rowsKeepTheirDistances() {
            History.add("um", 1);
            History.add("dois", 2);
            show();
            const [first, second] = rows();
            compare(first.mapToItem(list(), 0, 0), Qt.point(8, 8));
            compare(first.width, 430 - 16);
            compare(second.y - (first.y + first.height), 3);
            const tile = items(first, item => item instanceof EntryTile)[0];
            compare(Qt.size(tile.width, tile.height), Qt.size(38, 38));
        }
        function test_aCardNumberIsMasked() {
            History.addCard("4111 1111 1111 1111");
            show();
            compare(shown(rows()[0])[0], "41••••••••••••");
            compare(items(rows()[0], item => item instanceof Symbol && item.visible)[0].name, "lock.fill");
        }
        function test_markupIsShownAsItStands() {
            History.add("<b>um</b> &amp;", 1);
            show();
            compare(texts(rows()[0])[0].textFormat, Text.PlainText);
        }
        function test_nothingOverflows_data() {
            return [
                {
                    tag: "long",
                    source: "Notas",
                    text: "palavra ".repeat(200)
                },
                {
                    tag: "one word",
                    source: "Notas",
                    text: "x".repeat(1000)
                },
                {
                    tag: "emoji",
                    source: "Notas",
                    text: "👩‍👩‍👧‍👦".repeat(200)
                },
                {
                    tag: "right to left",
                    source: "محرر النصوص ".repeat(20),
                    text: "هذا نص عربي طويل ".repeat(50)
                },
                {
                    tag: "line breaks",
                    source: "a\nb\u2028c",
                    text: "um\r\ndois\u2028três\u0085quatro\u000bcinco"
                },
                {
                    tag: "long source",
                    source: "Um aplicativo de nome comprido ".repeat(10),
                    text: "um"
                }
            ];
        }
        function test_nothingOverflows(data) {
            History.addFrom(data.source, data.text);
            show();
            const row = rows()[0];
            for (const text of texts(row)) {
                const left = text.mapToItem(row, 0, 0).x;
                verify(left >= 38, "starts at " + left);
                verify(left + text.contentWidth <= row.width, text.text + " ends at " + (left + text.contentWidth));
                compare(text.lineCount, 1);
                verify(text.mapToItem(row, 0, text.contentHeight).y <= row.height);
            }
        }
        function test_aClickCopiesItsRowAndSaysSo() {
            History.add("um", 1);
            History.add("dois", 2);
            show();
            mouseClick(rows()[1]);
            compare(History.pasteboard(), "dois");
            verify(rows()[1].isSelected);
            verify(shown(content).includes("Copiado — use ⌘V para colar"));
        }
        function test_arrowsAndReturnWorkWithoutAMouse() {
            History.add("um", 1);
            History.add("dois", 2);
            show();
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Down);
            verify(rows()[1].isSelected);
            keyClick(Qt.Key_Up);
            verify(rows()[0].isSelected);
            keyClick(Qt.Key_Return);
            compare(History.pasteboard(), "um");
        }
        function test_theSelectedRowIsScrolledIntoView() {
            for (let i = 0; i < 40; ++i)
                History.add("linha " + i, i + 1);
            show();
            keyClick(Qt.Key_Up);
            tryVerify(() => list().atYEnd, patience);
            keyClick(Qt.Key_Down);
            verify(list().atYEnd);
        }
        function test_whatWasCopiedLastIsSeenWhereTheListIsAtItsTop() {
            for (let i = 0; i < 40; ++i)
                History.add("linha " + i, i + 1);
            show();
            History.add("novo", 0);
            tryVerify(() => rows()[0].row.summary === "novo" && rows()[0].mapToItem(list(), 0, 0).y === 8, patience);
        }
        function test_aScrolledListStaysWhereItIs() {
            for (let i = 0; i < 40; ++i)
                History.add("linha " + i, i + 1);
            show();
            list().contentY = 500;
            const row = rows().find(item => item.mapToItem(list(), 0, 0).y > 100);
            const before = row.mapToItem(list(), 0, 0).y;
            History.add("novo", 0);
            verify(waitForRendering(content, patience));
            compare(row.mapToItem(list(), 0, 0).y, before);
        }
        function test_aMissingPictureShowsASymbol() {
            ignoreWarning(/no picture/);
            History.addPicture("sumiu.png");
            show();
            const tile = items(rows()[0], item => item instanceof EntryTile)[0];
            tryVerify(() => items(tile, item => item instanceof Symbol && item.visible).length === 1, patience);
            compare(items(tile, item => item instanceof Symbol)[0].name, "photo");
        }
        function test_aStorageErrorStandsBelowTheStatus() {
            History.add("um", 1);
            show();
            mouseClick(rows()[0]);
            History.failToSave("disco cheio ".repeat(20));
            verify(waitForRendering(content, patience));
            const [status, error] = items(content, item => item instanceof MessageLine && item.visible);
            compare(status.message, "Copiado — use ⌘V para colar");
            verify(error.message.startsWith("Não foi possível salvar o histórico: disco cheio"));
            verify(error.mapToItem(content, 0, 0).y >= status.mapToItem(content, 0, status.height).y);
            compare(error.mapToItem(content, 0, error.height).y, visibleItems(item => item instanceof PanelFooter)[0].y);
            verify(texts(error)[0].truncated);
            compare(error.Accessible.name, error.message);
        }
    }
}
