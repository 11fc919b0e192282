// Markup in stored text: where a tag or an entity ends.
#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <string_view>

namespace lirovan::search {

/// The end of the tag or comment that begins at the "<" at `at`; nothing where that is no markup: a tag's
/// name, "/", "!" or "?" has to follow, and a ">" before the next "<" (before "-->" in a comment).
std::optional<size_t> tagEnd(std::string_view text, size_t at) noexcept;

/// Whether the tag of these bytes breaks a line or a cell, so that the words beside it are not one.
bool separatesWords(std::string_view tag) noexcept;

/// The end of the entity that begins at the "&" at `at`: «&quot;», «&#39;», «&#x2019;», at most 32 bytes.
std::optional<size_t> entityEnd(std::string_view text, size_t at) noexcept;

/// The character of an entity; nothing where it has none that is known here.
std::optional<char32_t> entityCharacter(std::string_view entity);

}  // namespace lirovan::search
