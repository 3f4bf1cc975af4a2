// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <QString>

#include "Model/ElementFields.h"

class QComboBox;

/// What stands for a text that the selected elements don't share.
[[nodiscard]] QString MultipleItemsText();

/// The text that all elements have, or MultipleItemsText.
[[nodiscard]] QString SharedText(const Shared<std::wstring>& text);

/// Gives the first row the colours of what stands for several values.
void ColourMultipleItemsRow(QComboBox& list);

/// Puts a first row with MultipleItemsText into a list, which shows it and in which nobody can
/// choose it. It has no data.
void ShowMultipleItemsRow(QComboBox& list);
