// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QObject>
#include <QTimer>

class QSettings;
class QTreeView;

/// The columns of a list: which ones show and in which order, and how wide they are. They grow with
/// their contents until the operator sets a width, and stay as they are set, from run to run.
class ListColumns : public QObject
{
    Q_OBJECT

public:
    /// `view` has its model and its object name, and outlives this object. `shown` are columns of
    /// the model from left to right; the others are hidden.
    ListColumns(QTreeView& view, std::vector<int> shown);

    /// What Write wrote; anything else changes nothing.
    void Read(const QSettings& store);
    void Write(QSettings& store) const;
    /// As wide as their contents, in their first order.
    void Reset();

private:
    [[nodiscard]] QString Key() const;
    void ShowColumns();
    void Fit(bool mayShrink);

    QTreeView& view_;
    const std::vector<int> shown_;
    QTimer fitsSoon_; ///< gathers the rows that come
    bool isFitting_ = false;
    bool keeps_ = false;   ///< the operator has set a width
    bool replaced_ = true; ///< other rows came since the last fit
};
