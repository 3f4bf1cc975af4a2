// SPDX-License-Identifier: MIT
#include "UI/Library/FixtureImporting.h"

#include <algorithm>
#include <set>
#include <utility>

#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <QUndoStack>

#include "Model/DeviceLedItem.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Model/FixtureNames.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/FixtureImport/ImportFixturesDialog.h"
#include "UI/Library/LibraryList.h"

namespace {

/// Of fixtures that are added, with a walk over the document's elements for each time.
constexpr std::size_t AtOnce = 32;
constexpr int BetweenPortions = 1; ///< milliseconds
/// Less than a tick has to spare.
constexpr qint64 PortionNanoseconds = 4'000'000;

} // namespace

FixtureImporting::FixtureImporting(Parts parts)
    : parts_(std::move(parts))
{
    timer_.setInterval(BetweenPortions);
    connect(&timer_, &QTimer::timeout, this, &FixtureImporting::DoPortion);
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
    connect(&dialog, &ImportFixturesDialog::takeBackRequested, this,
            [this] { isTakingBack_ = true; });
    dialog.Read(paths);
    dialog.exec();
    // The program may end under the dialog: what was begun is finished, and the output goes on
    // until a slow disk has given the file that is being read.
    while (timer_.isActive())
        DoPortion();
    if (dialog.IsReading())
        (void)DoOnDisk(parts_.wait, [&dialog] {
            dialog.StopReadingAndWait();
            return SaveResult();
        });
}

void FixtureImporting::Begin()
{
    if (timer_.isActive())
        return;
    wanted_ = dialog_->Chosen();
    if (!MayReplace())
        return wanted_.clear();
    // What changes on the stage comes last: most that is cancelled has not come so far.
    std::stable_partition(wanted_.begin(), wanted_.end(),
                          [](const auto& wanted) { return !wanted.replaces; });
    taken_ = 0;
    done_.clear();
    done_.reserve(wanted_.size());
    isTakingBack_ = false;
    changedDocument_ = false;
    dialog_->ShowImported(0, static_cast<int>(wanted_.size()));
    timer_.start();
}

/// Asks when the document uses what would be replaced.
bool FixtureImporting::MayReplace() const
{
    std::set<std::wstring> used;
    for (const MappedLedItem* element : parts_.manager.GetMappedDeviceModel()->GetAllItems())
        used.insert(element->GetFixture().product);
    const auto count = std::ranges::count_if(wanted_, [&used](const auto& wanted) {
        return wanted.replaces && used.contains(NameInFile(wanted.fixture.product));
    });
    return count == 0 ||
           parts_.boxes.Confirm(
               dialog_, tr("Replace Used Fixtures"),
               tr("%n fixture(s) to replace are used in your current mapping file.\n\nReplacing "
                  "them changes what the placed fixtures send, at once. Replace them?",
                  nullptr, static_cast<int>(count)));
}

void FixtureImporting::DoPortion()
{
    QElapsedTimer time;
    time.start();
    const auto isDone = [this] {
        return isTakingBack_ ? done_.empty() : taken_ == wanted_.size();
    };
    while (!isDone() && time.nsecsElapsed() < PortionNanoseconds) {
        if (isTakingBack_)
            TakeLastBack();
        else
            TakeSome();
    }
    dialog_->ShowImported(static_cast<int>(isTakingBack_ ? done_.size() : taken_),
                          static_cast<int>(wanted_.size()));
    if (!isDone())
        return;
    timer_.stop();
    if (isTakingBack_)
        EndTakenBack();
    else
        End();
}

/// Many that are added, or one that replaces another: that walks over the library and the document.
void FixtureImporting::TakeSome()
{
    std::vector<LEDFixture> added;
    const std::size_t end = std::min(taken_ + AtOnce, wanted_.size());
    while (taken_ < end) {
        const bool replaces = wanted_[taken_].replaces;
        if (replaces && !added.empty())
            break;
        LEDFixture fixture = wanted_[taken_++].fixture;
        fixture.manufacturer = NameInFile(fixture.manufacturer);
        fixture.product = NameInFile(fixture.product);
        const DeviceLedItem* present = parts_.manager.GetLEDFixtureByProduct(fixture.product);
        if (present && replaces)
            return Replace(*present, fixture);
        if (present)
            continue; // It came meanwhile, with a document.
        done_.push_back({fixture.product, std::nullopt});
        added.push_back(std::move(fixture));
    }
    (void)parts_.manager.AddFixtures(added);
}

void FixtureImporting::Replace(const DeviceLedItem& present, const LEDFixture& fixture)
{
    changedDocument_ = changedDocument_ || IsUsed(present);
    done_.push_back({fixture.product, present});
    parts_.manager.ChangeFixture(present.uniqueID, fixture);
}

void FixtureImporting::TakeLastBack()
{
    const Done last = std::move(done_.back());
    done_.pop_back();
    DeviceLedItem* present = parts_.manager.GetLEDFixtureByProduct(last.product);
    if (!present)
        return;
    if (last.before)
        parts_.manager.ChangeFixture(present->uniqueID, *last.before);
    else if (!IsUsed(*present)) // by a document that came meanwhile
        parts_.manager.GetDeviceModel()->TakeBack(*present);
}

void FixtureImporting::End()
{
    (void)parts_.manager.SaveLibrary(parts_.wait);
    if (std::ranges::any_of(done_, [](const Done& done) { return done.before.has_value(); }))
        parts_.undoStack.clear();
    if (changedDocument_)
        parts_.manager.SetDocumentDirty(true);
    // Not from the file: the library in memory also has what documents have brought into it.
    parts_.list.FollowChange(false);
    std::vector<std::wstring> products;
    products.reserve(done_.size());
    for (const Done& done : done_)
        products.push_back(done.product);
    parts_.list.ShowFixtures(products);
    const auto missed = static_cast<int>(wanted_.size() - done_.size());
    wanted_.clear();
    done_.clear();
    dialog_->Finish();
    if (missed > 0)
        parts_.boxes.Notify(
            &parts_.window, tr("Import Fixtures"),
            tr("%n fixture(s) were not imported: other fixtures of their names came into the "
               "library meanwhile. Import them again to choose what becomes of them.",
               nullptr, missed));
}

void FixtureImporting::EndTakenBack()
{
    wanted_.clear();
    parts_.list.FollowChange(false);
    dialog_->Finish();
}

bool FixtureImporting::IsUsed(const DeviceLedItem& fixture) const
{
    return parts_.manager.GetMappedDeviceModel()->IsFixtureUsed(fixture.uniqueID);
}
