#pragma once

#include "model/ClipboardStore.h"

#include <gtest/gtest.h>

#include <ostream>

namespace nettlecap {

// So that a failure explains itself.
void PrintTo(const Date& date, std::ostream* out);
void PrintTo(const Uuid& id, std::ostream* out);
void PrintTo(SensitiveContentKind kind, std::ostream* out);
void PrintTo(const ClipboardEntry& entry, std::ostream* out);
void PrintTo(const StoredEntry& entry, std::ostream* out);
void PrintTo(const SavedSnippet& snippet, std::ostream* out);
void PrintTo(const ClipboardStorageUsage& usage, std::ostream* out);
void PrintTo(const ClipboardStoreMutation& mutation, std::ostream* out);

/// 00000000-0000-4000-9000-… and the number, apart from those of FakeIdentifiers.
Uuid uuid(std::uint64_t number);

std::string textFingerprint(std::string_view text);
std::string imageFingerprint(std::string_view png);

/// A text as a capture would store it, with the number as its identity.
ClipboardEntry textEntry(std::uint64_t number, std::string text, double at);
ClipboardEntry imageEntry(std::uint64_t number, std::string filename, std::string_view png, double at);
SavedSnippet snippetRecord(std::uint64_t number, std::string title, std::string content, double at);

ClipboardEntry favorite(ClipboardEntry entry);

}  // namespace nettlecap
