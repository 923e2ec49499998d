import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 430
    height: 560

    PanelTestCase {
        name: "SnippetList"

        function showSnippets() {
            show();
            keyClick(Qt.Key_Right);
            verify(waitForRendering(content, patience));
        }
        function textEdit() {
            return items(sheet(), item => item instanceof TextEdit)[0];
        }

        function test_aRowShowsItsTitleAndItsTextOnOneLine() {
            History.addSnippet("Assinatura", "Até logo,\nMaria");
            showSnippets();
            compare(shown(rows()[0]), ["Assinatura", "Até logo, Maria"]);
            const symbol = items(rows()[0], item => item instanceof Symbol)[0];
            compare(symbol.name, "text.quote");
            compare(symbol.width, 24);
        }
        function test_aClickHandsItsTextOver() {
            History.addSnippet("Assinatura", "Até logo");
            showSnippets();
            mouseClick(rows()[0]);
            compare(History.pasteboard(), "Até logo");
        }
        function test_aDoubleClickHandsItOverOnce() {
            History.addSnippet("Assinatura", "Até logo");
            showSnippets();
            mouseDoubleClickSequence(rows()[0]);
            History.advance(5);
            compare(History.pasteboard(), "Até logo");
            verify(!sheet());
        }
        function test_withoutMessagesOneIsOffered() {
            showSnippets();
            verify(shown(content).includes("Nenhuma mensagem salva"));
            mouseClick(button("Criar mensagem"));
            verify(shown(sheet()).includes("Nova mensagem salva"));
        }
        function test_aNewMessageIsWrittenInTheSheet() {
            showSnippets();
            mouseClick(button("Adicionar"));
            tryVerify(() => sheet().Window.activeFocusItem instanceof TextInput, patience);
            type("oi");
            keyClick(Qt.Key_Tab);
            type("bom dia");
            mouseClick(sheetButton("Salvar"));
            compare(History.snippets(), ["oi|bom dia"]);
            tryVerify(() => !sheet(), patience);
            tryVerify(() => field().activeFocus, patience);
        }
        function test_thePencilOpensItsMessage() {
            History.addSnippet("Assinatura", "Até logo");
            showSnippets();
            mouseClick(button("Editar mensagem"));
            verify(shown(sheet()).includes("Editar mensagem"));
            compare(textEdit().text, "Até logo");
            compare(History.pasteboard(), "");
        }
        function test_escapeClosesTheSheetAndChangesNothing() {
            History.addSnippet("Assinatura", "Até logo");
            showSnippets();
            mouseClick(button("Editar mensagem"));
            type("x");
            keyClick(Qt.Key_Escape);
            tryVerify(() => !sheet(), patience);
            compare(History.snippets(), ["Assinatura|Até logo"]);
            tryVerify(() => field().activeFocus, patience);
        }
        function test_theSheetIsAWindowThatIsWiderThanThePanel() {
            showSnippets();
            mouseClick(button("Adicionar"));
            verify(sheet().Window.window !== content.Window.window);
            compare(sheet().Window.width, 440);
            compare(sheet().width, 440);
            compare(sheet().Window.height, sheet().height);
            compare(sheet().height, sheet().implicitHeight);
        }
        function test_belowTheSheetNothingTakesAClick() {
            History.addSnippet("Assinatura", "Até logo");
            showSnippets();
            mouseClick(button("Adicionar"));
            mouseClick(rows()[0]);
            mouseClick(button("Sair"));
            compare(History.pasteboard(), "");
            compare(History.quits(), 0);
            verify(shown(sheet()).includes("Nova mensagem salva"));
        }
        function test_eachOpeningIsASheetOfItsOwn() {
            showSnippets();
            mouseClick(button("Adicionar"));
            type("oi");
            keyClick(Qt.Key_Escape);
            mouseClick(button("Adicionar"));
            compare(items(sheet(), item => item instanceof TextInput)[0].text, "");
        }
        function test_theSelectedMessageIsScrolledIntoView() {
            for (let i = 0; i < 40; ++i)
                History.addSnippet("título " + i, "texto " + i);
            showSnippets();
            keyClick(Qt.Key_Up);
            tryVerify(() => list().atYEnd, patience);
            verify(rows().some(item => item.isSelected));
        }
    }
}
