// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <QString>

#include "Model/ElementFields.h"

class SteadyComboBox;

/// What stands for a text that the selected elements don't share.
[[nodiscard]] QString MultipleItemsText();

/// The text that all elements have, or MultipleItemsText.
[[nodiscard]] QString SharedText(const Shared<std::wstring>& text);

/// Puts a first row with MultipleItemsText into a list, which shows it and in which nobody can
/// choose it. It has no data.
void ShowMultipleItemsRow(SteadyComboBox& list);
