import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 430
    height: 560

    PanelTestCase {
        name: "HistoryRows"

        function star(row) {
            return items(row, item => item instanceof FlatButton)[0];
        }
        function addMany() {
            for (let i = 0; i < 40; ++i)
                History.add("linha " + i, i + 1);
        }
        function centreOf(row) {
            return row.mapToItem(list(), 0, row.height / 2).y;
        }

        function test_theStarMakesAFavouriteAndCopiesNothing() {
            History.add("um", 1);
            show();
            mouseClick(star(rows()[0]));
            compare(star(rows()[0]).symbol, "star.fill");
            verify(shown(content).includes("Adicionado aos favoritos"));
            compare(History.pasteboard(), "");
            mouseClick(star(rows()[0]));
            compare(star(rows()[0]).symbol, "star");
            verify(shown(content).includes("Removido dos favoritos"));
        }
        function test_everyRowHasItsStarAndAFavouritesHasAColourOfItsOwn() {
            History.add("um", 1);
            History.addFavorite("dois", 60);
            show();
            mouseMove(content, 1, 555);
            compare(star(rows()[1]).symbolInk.a, 1);
            verify(star(rows()[0]).symbolInk !== star(rows()[1]).symbolInk);
        }
        function test_thePointerEnteringARowOpensItsPreview() {
            History.add("um", 1);
            show();
            mouseMove(content, 1, 555);
            mouseMove(rows()[0], 100, 20);
            History.advance(0.25);
            verify(!rows()[0].row.isShowingPreview);
            History.advance(0.1);
            verify(rows()[0].row.isShowingPreview);
            mouseMove(content, 1, 555);
            History.advance(0.25);
            verify(!rows()[0].row.isShowingPreview);
        }
        function test_aRowThatComesUnderThePointerAtRestOpensNothing() {
            addMany();
            show();
            const place = Qt.point(200, 300);
            content.view.pointerRestsAt(place);
            mouseMove(content, place.x, place.y);
            History.advance(1);
            verify(!rows().some(item => item.row.isShowingPreview));
            mouseMove(content, place.x, place.y + 60);
            History.advance(1);
            verify(rows().some(item => item.row.isShowingPreview));
        }
        function test_aPreviewClosesWithItsSection() {
            History.add("um", 1);
            show();
            keyClick(Qt.Key_Down);
            History.advance(0.2);
            const row = rows()[0].row;
            verify(row.isShowingPreview);
            keyClick(Qt.Key_Right);
            verify(!row.isShowingPreview);
        }
        function test_theSelectedRowIsScrolledToTheMiddle() {
            addMany();
            show();
            for (let i = 0; i < 20; ++i)
                keyClick(Qt.Key_Down);
            const selected = () => rows().find(item => item.isSelected);
            tryVerify(() => selected() && Math.abs(centreOf(selected()) - list().height / 2) <= 1, patience);
        }
        function test_theScrollingTakesTime() {
            addMany();
            show();
            const before = list().contentY;
            keyClick(Qt.Key_Up);
            compare(list().contentY, before);
            tryVerify(() => list().atYEnd, patience);
        }
        function test_aSelectedRowThatMovesIsNotScrolledTo() {
            addMany();
            show();
            keyClick(Qt.Key_Down);
            list().contentY = 900;
            History.add("novo", 0);
            verify(waitForRendering(content, patience));
            wait(0);
            verify(list().contentY >= 900);
        }
        function test_theLastCopyMovesUpWithoutARowOfOthersBeingMadeAnew() {
            History.add("um", 1);
            History.add("dois", 2);
            show();
            const kept = rows()[1];
            History.add("novo", 0);
            tryVerify(() => rows().length === 3 && rows()[2] === kept, patience);
        }
    }
}
