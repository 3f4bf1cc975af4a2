// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Model/ElementCopies.h"

// Elements on their way to another document: the text form of a document with these elements, the
// fixtures that they use, and nothing else.

/// The bytes, as those of a file.
[[nodiscard]] std::string WriteElementText(std::span<const ElementValues> elements);

/// The elements of such a text from wherever it comes. None, after lines in the log, when it is
/// larger than any document or when anything in it is wrong: a part of a group is no use.
[[nodiscard]] std::vector<ElementValues> ReadElementText(std::string_view bytes);
