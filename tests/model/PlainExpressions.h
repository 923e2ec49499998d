#pragma once

#include <string_view>

/// The detector's expressions run over the whole text, with nothing that saves work: what
/// the detector must agree with. Slow.
namespace nettlecap::plain {

bool containsValidPaymentCard(std::string_view text);
bool isEmail(std::string_view text);
bool isUUID(std::string_view text);
bool isRepositoryPath(std::string_view text);  ///< wrappers are not taken off
bool resemblesSecret(std::string_view text);

}  // namespace nettlecap::plain
