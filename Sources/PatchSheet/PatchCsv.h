// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

struct PatchSheet;

enum class PatchOrder
{
    ByElement, ///< by number
    ByUniverse ///< by universe as it comes out, node and first channel; what isn't sent comes last
};

/// A patch as a table for spreadsheets and scripts: UTF-8, a header, a line for each element,
/// commas, lines and quotes as RFC 4180 has them, numbers with a point. Columns keep their names
/// and order; new ones come at the end.
///
/// A text is written as it is, also when it begins with = + - or @, which a spreadsheet may take
/// for a formula: what scripts read must be what the operator wrote, and names such as "-1 spare"
/// or "+X truss" are usual.
[[nodiscard]] QByteArray PatchCsv(const PatchSheet& sheet, PatchOrder order);
