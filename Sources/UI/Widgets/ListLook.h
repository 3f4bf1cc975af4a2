// SPDX-License-Identifier: MIT
#pragma once

class QString;
class QTreeView;

/// What the lists of the docks have in common: whole rows, several of them at once, sorted by a
/// click on the header, in small type.
void SetUpList(QTreeView& view, const QString& objectName, const QString& accessibleName);
