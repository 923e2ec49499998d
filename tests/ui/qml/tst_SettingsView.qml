import QtQuick
import QtTest
import Nettlecap
import Nettlecap.Tests

Item {
    id: root

    width: 430
    height: 560

    Component {
        id: form
        SettingsView {}
    }

    TestCase {
        id: test

        readonly property int patience: 30000  // milliseconds
        property Item content

        name: "SettingsView"
        when: windowShown

        function init() {
            Settings.startAfresh();
        }
        function cleanup() {
            content.destroy();
            wait(0);
        }
        function show() {
            mouseMove(root, 1, 1);
            content = form.createObject(root, {
                view: Settings.makeView(),
                width: 430,
                height: 560
            });
            verify(waitForRendering(content, patience));
        }
        function items(from, matches, found = []) {
            if (matches(from))
                found.push(from);
            for (let index = 0; index < from.children.length; ++index)
                items(from.children[index], matches, found);
            return found;
        }
        function shown(within) {
            return items(within, item => item instanceof Text && item.visible).map(item => item.text);
        }
        function sections() {
            return items(content, item => item instanceof SettingsSection);
        }
        function button(text) {
            return items(content, item => item instanceof PushButton && item.text === text && item.visible)[0];
        }
        function settingsSwitch(text) {
            return items(content, item => item instanceof SettingsSwitch && item.text === text)[0];
        }
        function reveal(item) {
            const before = scroll().contentY;
            scroll().reveal(item);
            if (scroll().contentY !== before)
                verify(waitForRendering(content, patience));
        }
        function press(item) {
            reveal(item);
            mouseClick(item);
        }
        function scroll() {
            return items(content, item => item instanceof Flickable && item.parent === content)[0];
        }
        function editors() {
            return items(content, item => item instanceof ShortcutEditor);
        }
        function toggles(editor) {
            return items(editor, item => item instanceof ModifierToggle);
        }
        function picker(editor) {
            return items(editor, item => item instanceof KeyPicker)[0];
        }
        function menu() {
            return items(content, item => item instanceof KeyMenu)[0];
        }
        function menuRows() {
            return items(menu(), item => item instanceof KeyMenuRow);
        }
        function alert() {
            return items(content, item => item instanceof ConfirmationAlert)[0];
        }

        function test_anAlertCoversWhatStandsAboveTheForm() {
            show();
            content.above = 34;
            content.view.showPurgeConfirmation = true;
            const covered = alert().mapToItem(content, 0, 0, alert().width, alert().height);
            compare(covered, Qt.rect(0, -34, 430, 594));
        }
        function test_sectionsStandInOrder() {
            show();
            compare(sections().map(section => section.title), ["Atualizações", "Atalhos globais", "Comportamento", "Armazenamento", "Privacidade"]);
            const tops = sections().map(section => section.mapToItem(content, 0, 0).y);
            compare(tops, tops.slice().sort((a, b) => a - b));
        }
        function test_theUpdatesButtonChecks() {
            show();
            const update = button("Buscar atualizações…");
            compare(update.symbol, "arrow.triangle.2.circlepath");
            press(update);
            compare(Settings.updateChecks(), 1);
        }
        function test_aModifierStaysPressed() {
            show();
            const [control, , , command] = toggles(editors()[0]);
            compare(toggles(editors()[0]).map(toggle => toggle.symbol), ["⌃", "⌥", "⇧", "⌘"]);
            mouseClick(control);
            verify(control.isOn);
            mouseClick(command);
            verify(!command.isOn);
        }
        function test_theLastModifierSpringsBack() {
            show();
            const command = toggles(editors()[0])[3];
            mouseClick(command);
            verify(command.isOn);
        }
        function test_aKeyIsChosenWithTheMouse() {
            show();
            compare(picker(editors()[0]).width, 70);
            mouseClick(picker(editors()[0]));
            tryVerify(() => menuRows().length > 1, patience);
            compare(menuRows().filter(row => row.isChosen).map(row => row.modelData), ["1"]);
            mouseClick(menuRows().find(row => row.modelData === "3"));
            verify(!menu().visible);
            compare(picker(editors()[0]).key, "3");
            compare(picker(editors()[1]).key, "2");
        }
        function test_aKeyIsChosenWithTheKeyboard() {
            show();
            picker(editors()[3]).forceActiveFocus();
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_K);
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Return);
            compare(picker(editors()[3]).key, "L");
            verify(picker(editors()[3]).activeFocus);
        }
        function test_theListOfKeysClosesWithoutAChange() {
            show();
            mouseClick(picker(editors()[0]));
            keyClick(Qt.Key_Down);
            keyClick(Qt.Key_Escape);
            verify(!menu().visible);
            mouseClick(picker(editors()[0]));
            verify(menu().visible);
            mouseClick(content, 5, 5);
            verify(!menu().visible);
            compare(picker(editors()[0]).key, "1");
        }
        function test_aKeyThatIsNotOfferedHasNoRow() {
            Settings.setKey(999);
            show();
            compare(picker(editors()[0]).key, "?");
            picker(editors()[0]).forceActiveFocus();
            keyClick(Qt.Key_Space);
            tryVerify(() => menuRows().length > 1, patience);
            compare(menuRows().filter(row => row.isChosen), []);
            keyClick(Qt.Key_Return);
            compare(picker(editors()[0]).key, "?");
        }
        function test_theDefaultsComeBack() {
            show();
            mouseClick(toggles(editors()[1])[0]);
            press(button("Restaurar atalhos padrão"));
            compare(toggles(editors()[1]).map(toggle => toggle.isOn), [false, false, false, true]);
        }
        function test_aSwitchSaysItsState() {
            show();
            const images = settingsSwitch("Guardar imagens");
            verify(shown(images).includes("Ativado"));
            press(images);
            verify(!content.view.captureImages);
            verify(shown(images).includes("Desativado"));
        }
        function test_switchesFollowTheirOwnPreferences_data() {
            return [
                { tag: "launchAtLogin", text: "Iniciar automaticamente com o Mac" },
                { tag: "autoPaste", text: "Colar automaticamente ao clicar em um item" },
                { tag: "protectSensitiveContent", text: "Ocultar cartões, senhas e tokens" }
            ];
        }
        function test_switchesFollowTheirOwnPreferences(data) {
            show();
            const before = content.view[data.tag];
            press(settingsSwitch(data.text));
            compare(content.view[data.tag], !before);
            compare(settingsSwitch(data.text).isOn, !before);
        }
        function test_theSwitchIsThirtyEightByTwentyTwo() {
            show();
            const sizes = items(settingsSwitch("Guardar imagens"), item => item instanceof Rectangle).map(item => item.width + "x" + item.height);
            verify(sizes.includes("38x22"));
            verify(sizes.includes("18x18"));
        }
        function test_twoClicksNeedAutomaticPasting() {
            show();
            const twoClicks = settingsSwitch("Usar dois cliques para colar no histórico");
            verify(!twoClicks.enabled);
            verify(shown(content).includes("Ative a colagem automática para escolher entre um ou dois cliques."));
            press(twoClicks);
            verify(content.view.pasteHistoryOnDoubleClick);
            content.view.autoPaste = true;
            verify(shown(content).includes("Ativado: um clique seleciona e copia; dois cliques colam. Desativado: um clique cola."));
            press(twoClicks);
            verify(!content.view.pasteHistoryOnDoubleClick);
        }
        function test_theLoginItemMayAwaitApproval() {
            show();
            const warning = "O macOS aguarda sua autorização nos Itens de Início.";
            verify(!shown(content).includes(warning));
            verify(!button("Abrir Itens de Início"));
            Settings.requireApproval();
            verify(shown(content).includes(warning));
            verify(waitForRendering(content, patience));
            press(button("Abrir Itens de Início"));
            compare(Settings.loginItemOpenings(), 1);
        }
        function test_thePermissionToPasteIsTold() {
            show();
            verify(shown(content).includes("Permissão de Acessibilidade concedida"));
            Settings.setTrusted(false);
            content.view.refreshPermission();
            verify(shown(content).includes("A colagem automática pedirá permissão de Acessibilidade"));
            verify(!shown(content).includes("Permissão de Acessibilidade concedida"));
        }
        function test_theStorageIsTold() {
            Settings.add("um");
            show();
            verify(shown(content).includes("1 item • 0 imagens"));
            verify(shown(content).includes("Limite do histórico: 500 itens"));
        }
        function test_theStepperStepsAndStops() {
            Settings.setLimit(4950);
            show();
            const [up, down] = items(content, item => item instanceof StepButton);
            press(up);
            compare(Settings.limit(), 5000);
            verify(!up.enabled);
            press(down);
            compare(Settings.limit(), 4950);
            keyClick(Qt.Key_Tab);
            items(content, item => item instanceof Stepper)[0].forceActiveFocus();
            keyClick(Qt.Key_Down);
            compare(Settings.limit(), 4900);
        }
        function test_thePurgeAsksFirst() {
            Settings.add("um");
            show();
            press(button("Limpar histórico…"));
            verify(alert().visible);
            verify(shown(alert()).includes("Limpar o histórico?"));
            verify(button("Cancelar").activeFocus);
            compare(Settings.entries(), 1);
            mouseClick(button("Limpar"));
            verify(!alert().visible);
            compare(Settings.entries(), 0);
        }
        function test_thePurgeIsCancelled_data() {
            return [{ tag: "Escape", key: Qt.Key_Escape }, { tag: "Return", key: Qt.Key_Return }, { tag: "Space", key: Qt.Key_Space }];
        }
        function test_thePurgeIsCancelled(data) {
            Settings.add("um");
            show();
            content.view.showPurgeConfirmation = true;
            keyClick(data.key);
            verify(!alert().visible);
            compare(Settings.entries(), 1);
        }
        function test_theAlertKeepsMouseAndKeyboard() {
            show();
            content.view.showPurgeConfirmation = true;
            mouseClick(content, 100, 58);
            compare(Settings.updateChecks(), 0);
            keyClick(Qt.Key_Tab);
            verify(button("Limpar").activeFocus);
            keyClick(Qt.Key_Tab);
            verify(button("Cancelar").activeFocus);
        }
        function test_theKeyboardIsWhereItWasAfterTheAlert() {
            show();
            content.view.showPurgeConfirmation = true;
            keyClick(Qt.Key_Escape);
            keyClick(Qt.Key_Tab);
            compare(content.focusedItem, button("Buscar atualizações…"));
            button("Limpar histórico…").forceActiveFocus();
            keyClick(Qt.Key_Space);
            keyClick(Qt.Key_Escape);
            verify(!alert().visible);
            compare(content.focusedItem, button("Limpar histórico…"));
        }
        function test_protectionSaysWhatItDoes() {
            show();
            const on = ["Conteúdos provavelmente sensíveis ficam mascarados na lista, na busca, no preview e durante a navegação. Eles só são revelados ao copiar ou colar.", "Caminhos, nomes de usuário, repositórios e URLs não são tratados como senhas."];
            const off = "Proteção desativada: conteúdos sensíveis ficarão visíveis no Nettlecap.";
            verify(on.every(note => shown(content).includes(note)) && !shown(content).includes(off));
            content.view.protectSensitiveContent = false;
            verify(on.every(note => !shown(content).includes(note)) && shown(content).includes(off));
        }
        function test_theNotesAreThere() {
            show();
            for (const note of ["As alterações são aplicadas imediatamente.", "Padrões: ⌘1 para voltar, ⌘2 para avançar, ⌘⇧V para pesquisar e ⌥F para favoritar ou desfavoritar a seleção.", "Ao navegar com os atalhos, o item é colado quando você solta as teclas.", "Itens favoritados e mensagens da guia Salvos não são removidos pelo limite do histórico.", "Remove permanentemente do Nettlecap os textos e imagens não favoritados. O histórico do Spotlight é controlado pelo macOS; o Nettlecap não tem acesso para excluí-lo ou modificá-lo.", "O histórico fica somente neste Mac. Conteúdos marcados por outros aplicativos como temporários ou confidenciais são ignorados."])
                verify(shown(content).includes(note), note);
        }
        function test_theKeyboardReachesEveryControlAndTheFormFollows() {
            show();
            const seen = [];
            for (let index = 0; index < 40; ++index) {
                keyClick(Qt.Key_Tab);
                const item = content.focusedItem;
                const top = item.mapToItem(content, 0, 0).y;
                verify(top >= 0 && top + item.height <= 560, item + " is out of sight");
                if (!seen.includes(item))
                    seen.push(item);
            }
            compare(seen.filter(item => item instanceof ModifierToggle).length, 16);
            compare(seen.filter(item => item instanceof KeyPicker).length, 4);
            compare(seen.filter(item => item instanceof PushButton).length, 3);
            compare(seen.filter(item => item instanceof SettingsSwitch).length, 4);
            compare(seen.filter(item => item instanceof Stepper).length, 1);
        }
        function test_whatStandsBesideNoControlIsReachedByPages() {
            show();
            button("Limpar histórico…").forceActiveFocus();
            for (let page = 0; page < 4; ++page)
                keyClick(Qt.Key_PageDown);
            verify(scroll().atYEnd);
            keyClick(Qt.Key_PageUp);
            verify(!scroll().atYEnd);
            for (let page = 0; page < 4; ++page)
                keyClick(Qt.Key_PageUp);
            verify(scroll().atYBeginning);
        }
        function test_nothingOverflows() {
            Settings.requireApproval();
            show();
            for (const text of items(scroll(), item => item instanceof Text && item.visible)) {
                const right = text.mapToItem(content, text.contentWidth, 0).x;
                verify(right <= 430 - 14, text.text + " ends at " + right);
                verify(!text.truncated, text.text);
            }
        }
    }
}
