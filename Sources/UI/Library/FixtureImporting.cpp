// SPDX-License-Identifier: MIT
#include "UI/Library/FixtureImporting.h"

#include <algorithm>
#include <utility>

#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <QUndoStack>

#include "Model/DeviceManager.h"
#include "Model/FixtureNames.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/FixtureImport/ImportFixturesDialog.h"
#include "UI/Library/LibraryList.h"

namespace {

/// With a walk over the document's elements for each time.
constexpr std::size_t AtOnce = 32;
constexpr int BetweenPortions = 1; ///< milliseconds
/// Less than a tick has to spare.
constexpr qint64 PortionNanoseconds = 4'000'000;

} // namespace

FixtureImporting::FixtureImporting(Parts parts)
    : parts_(std::move(parts))
{
    timer_.setInterval(BetweenPortions);
    connect(&timer_, &QTimer::timeout, this, &FixtureImporting::TakePortion);
}

void FixtureImporting::Import(const QStringList& paths)
{
    if (dialog_)
        return dialog_->Read(paths);
    ImportFixturesDialog dialog(
        [&manager = parts_.manager](const std::wstring& product) -> const LEDFixture* {
            return manager.GetLEDFixtureByProduct(product);
        },
        parts_.boxes, &parts_.window);
    const QScopedValueRollback<ImportFixturesDialog*> isOpen(dialog_, &dialog);
    connect(&dialog, &ImportFixturesDialog::importRequested, this, &FixtureImporting::Begin);
    dialog.Read(paths);
    dialog.exec();
    // The program may end under the dialog: what was begun is finished.
    while (timer_.isActive())
        TakePortion();
}

void FixtureImporting::Begin()
{
    if (timer_.isActive())
        return;
    wanted_ = dialog_->Chosen();
    taken_ = 0;
    products_.clear();
    products_.reserve(wanted_.size());
    hasReplaced_ = false;
    changedDocument_ = false;
    dialog_->ShowImported(0, static_cast<int>(wanted_.size()));
    timer_.start();
}

void FixtureImporting::TakePortion()
{
    QElapsedTimer time;
    time.start();
    while (taken_ < wanted_.size() && time.nsecsElapsed() < PortionNanoseconds)
        TakeSome();
    dialog_->ShowImported(static_cast<int>(taken_), static_cast<int>(wanted_.size()));
    if (taken_ == wanted_.size())
        End();
}

void FixtureImporting::TakeSome()
{
    std::vector<LEDFixture> added;
    const std::size_t end = std::min(taken_ + AtOnce, wanted_.size());
    for (; taken_ < end; ++taken_) {
        LEDFixture fixture = wanted_[taken_].fixture;
        fixture.manufacturer = NameInFile(fixture.manufacturer);
        fixture.product = NameInFile(fixture.product);
        const DeviceLedItem* present = parts_.manager.GetLEDFixtureByProduct(fixture.product);
        if (present && !wanted_[taken_].replaces)
            continue; // It came meanwhile, with a document.
        products_.push_back(fixture.product);
        if (present)
            Replace(present->uniqueID, fixture);
        else
            added.push_back(std::move(fixture));
    }
    (void)parts_.manager.AddFixtures(added);
}

void FixtureImporting::Replace(std::int64_t fixtureID, const LEDFixture& fixture)
{
    changedDocument_ =
        changedDocument_ || parts_.manager.GetMappedDeviceModel()->IsFixtureUsed(fixtureID);
    hasReplaced_ = true;
    parts_.manager.ChangeFixture(fixtureID, fixture);
}

void FixtureImporting::End()
{
    timer_.stop();
    (void)parts_.manager.SaveLibrary(parts_.wait);
    if (hasReplaced_)
        parts_.undoStack.clear();
    if (changedDocument_)
        parts_.manager.SetDocumentDirty(true);
    // Not from the file: the library in memory also has what documents have brought into it.
    parts_.list.FollowChange(false);
    parts_.list.ShowFixtures(products_);
    const auto missed = static_cast<int>(wanted_.size() - products_.size());
    wanted_.clear();
    dialog_->Finish();
    if (missed > 0)
        parts_.boxes.Notify(
            &parts_.window, tr("Import Fixtures"),
            tr("%n fixture(s) were not imported: other fixtures of their names came into the "
               "library meanwhile. Import them again to choose what becomes of them.",
               nullptr, missed));
}
