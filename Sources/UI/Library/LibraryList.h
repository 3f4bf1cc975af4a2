// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include <QItemSelectionModel>
#include <QStringList>
#include <QWidget>

class DeviceLedItem;
class DeviceListProxy;
class DeviceManager;
class LEDDeviceListView;
class QLabel;
class QLineEdit;

/// The list of the fixture library, and above it the line that narrows it while one types. When the
/// library is loaded again, it comes back as it was: narrowed, expanded, selected and scrolled.
class LibraryList : public QWidget
{
    Q_OBJECT

public:
    /// `manager` lives until Release.
    explicit LibraryList(DeviceManager& manager);
    /// From then on the list shows nothing.
    void Release();

    [[nodiscard]] LEDDeviceListView& View() const { return *view_; }
    /// Invalid for a product that the library has not, and for one that the filter hides.
    [[nodiscard]] QModelIndex RowOf(const std::wstring& product) const;

    /// Selects this fixture and brings it into sight. A filter that hides it goes.
    void ShowFixture(const std::wstring& product);
    /// The same for several, and brings the first one into sight.
    void ShowFixtures(const std::vector<std::wstring>& products);
    /// After a change of rows: loads the user's file, or, when that could not be saved, puts the
    /// rows in memory in their order.
    void FollowChange(bool saved);

signals:
    /// Files and folders were dropped on the list.
    void filesDropped(const QStringList& paths);

public slots:
    /// The library was loaded, or has more fixtures.
    void FollowLibrary();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildContents();
    [[nodiscard]] DeviceListProxy& Rows() const;
    [[nodiscard]] QStringList ExpandedManufacturers() const;
    void Remember();
    void Filter();
    void Narrow();
    void Expand();
    void Select(const QModelIndex& row, QItemSelectionModel::SelectionFlags how);
    void SelectAgain();
    void ShowHits();
    void GoToFirstHit();
    void Load();

    DeviceManager& manager_;
    QLineEdit* filter_;
    QLabel* hits_;
    LEDDeviceListView* view_;
    // How the list is without filter, and how it was before the library was loaded again.
    QStringList expanded_; ///< manufacturers
    QStringList selected_; ///< products
    int scrolled_ = 0;
    bool isLost_ = false; ///< nothing of it shows
};
