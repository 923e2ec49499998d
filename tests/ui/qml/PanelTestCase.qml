import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

/// The main view on a history in memory, and what a test finds in it.
TestCase {
    id: test

    readonly property int patience: 30000  // milliseconds
    property Item content

    when: windowShown

    property Component panel: Component {
        MenuBarContentView {}
    }

    function init() {
        History.startAfresh();
    }
    function cleanup() {
        content.destroy();
        wait(0);
    }
    function show() {
        content = panel.createObject(test.parent, {
            view: History.makeView(),
            width: 430,
            height: 560
        });
        History.giveSheets(content.Window.window);
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
    function visibleItems(matches) {
        return items(content, item => item.visible && matches(item));
    }
    function rows() {
        return visibleItems(item => item instanceof ListRow).sort((a, b) => a.y - b.y);
    }
    function texts(within) {
        return items(within, item => item instanceof Text && item.visible);
    }
    function shown(within) {
        return texts(within).map(item => item.text);
    }
    function list() {
        return visibleItems(item => item instanceof ListView)[0];
    }
    function button(name) {
        return visibleItems(item => item instanceof Pressable && item.Accessible.name === name)[0];
    }
    function sheet() {
        return History.sheetOver(content.Window.window);
    }
    function sheetButton(text) {
        return items(sheet(), item => item instanceof PushButton && item.text === text)[0];
    }
    function field() {
        return visibleItems(item => item instanceof SearchField)[0];
    }
    function menu() {
        return visibleItems(item => item instanceof ContextMenu)[0];
    }
    function menuLines() {
        return items(menu(), item => item instanceof ContextMenuLine).map(item => item.modelData.isDivider ? "-" : item.modelData.label);
    }
    function alert() {
        return visibleItems(item => item instanceof ConfirmationAlert)[0];
    }
    function type(text) {
        for (const letter of text)
            keyClick(letter);
    }
}
