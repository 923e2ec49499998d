#pragma once

#include <string_view>
#include <vector>

/// The detector's expressions run over the whole text, with nothing that saves work: what
/// the detector must agree with. Slow.
namespace nettlecap::plain {

bool containsValidPaymentCard(std::string_view text);
std::vector<std::size_t> characterEnds(std::string_view text);  ///< of grapheme clusters, in bytes
bool isEmail(std::string_view text);
bool isUUID(std::string_view text);
bool isRepositoryPath(std::string_view text);  ///< wrappers are not taken off
bool resemblesSecret(std::string_view text);

}  // namespace nettlecap::plain
