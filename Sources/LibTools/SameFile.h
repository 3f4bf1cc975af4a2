// SPDX-License-Identifier: MIT
#pragma once

class QString;

/// Whether both paths lead to one file. Also through a link, and for a name in other case, which a
/// network share may take for the same.
[[nodiscard]] bool IsSameFile(const QString& one, const QString& other);
