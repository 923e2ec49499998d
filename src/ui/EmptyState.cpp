#include "ui/EmptyState.h"

namespace nettlecap {

EmptyState EmptyState::noHistory() {
    return {.symbol = QStringLiteral("clipboard"),
            .title = QStringLiteral("Nenhuma cópia ainda"),
            .text = QStringLiteral("Textos e imagens copiados aparecerão aqui."),
            .button = {}};
}

EmptyState EmptyState::noSnippets() {
    return {.symbol = QStringLiteral("text.badge.plus"),
            .title = QStringLiteral("Nenhuma mensagem salva"),
            .text = QStringLiteral("Salve respostas, assinaturas e textos usados com frequência."),
            .button = QStringLiteral("Criar mensagem")};
}

EmptyState EmptyState::nothingFound() {
    return {.symbol = QStringLiteral("magnifyingglass"),
            .title = QStringLiteral("Nada encontrado"),
            .text = QStringLiteral("Tente buscar por outro termo."),
            .button = {}};
}

}  // namespace nettlecap
