// SPDX-License-Identifier: MIT
#pragma once

#include <Qt>

/// How well a row of a list is, for the views that mark it. Their tool tip says the rest.
enum class Trouble : int
{
    None = 0,
    Caution = 1, ///< works, and not as it should
    Fault = 2    ///< does not work
};

/// The role of the models under which a row gives the number of its Trouble, in every column.
constexpr int TroubleRole = Qt::UserRole + 1;
