// SPDX-License-Identifier: MIT
#include "UI/Library/FixtureEditing.h"

#include <functional>
#include <optional>
#include <utility>

#include <QUndoStack>

#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/FixtureNames.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/FixtureEditor/WEFTCustomFixtureDialog.h"
#include "UI/FixtureEditor/WEFTCustomFixtureSizeDialog.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Library/LibraryList.h"

namespace {

constexpr FixtureSize NewSize{4, 4, PixelMapType::RGB, 48};

std::wstring NameOf(const QString& typed)
{
    return NameInFile(typed.toStdWString());
}

LEDFixture FixtureIn(const WEFTCustomFixtureDialog& editor)
{
    const FixtureLayout& layout = editor.GetLayout();
    LEDFixture fixture(NameOf(editor.GetManufacturer()), NameOf(editor.GetProduct()),
                       layout.GetPixelMap(), 0, layout.GetChannelCount());
    fixture.staticChannels = layout.GetConstants();
    return fixture;
}

/// What is wrong with names for the fixture that has the product `present`; it is asked for when
/// names are checked, as it changes meanwhile.
WEFTCustomFixtureDialog::NameCheck CheckAgainst(const DeviceManager& manager,
                                                std::function<std::wstring()> present)
{
    return [&manager, present = std::move(present)](const QString& manufacturer,
                                                    const QString& product) {
        const DeviceModel& library = *manager.GetDeviceModel();
        switch (FindNameFault(library, present(), NameOf(manufacturer), NameOf(product))) {
        case NameFault::NoManufacturer:
            return FixtureEditing::tr("Enter the name of the manufacturer.");
        case NameFault::NoProduct:
            return FixtureEditing::tr("Enter the name of the product.");
        case NameFault::ProductTaken:
            return FixtureEditing::tr(
                       "There is a product of this name already, from \"%1\".\n\nMappings know a "
                       "fixture by the name of its product, so the library holds each name once.")
                .arg(QString::fromStdWString(
                    library.GetLEDFixtureByProduct(NameOf(product))->manufacturer));
        case NameFault::None:
            break;
        }
        return QString();
    };
}

/// One fixture while it is edited: puts what the editor shows into effect, and takes it back.
class FixtureEdit
{
public:
    FixtureEdit(const FixtureEditing::Parts& parts, const LEDFixture& fixture)
        : parts_(parts)
        , original_(fixture)
        , present_(fixture)
    {}

    [[nodiscard]] const std::wstring& Product() const { return present_.product; }

    void Apply(const LEDFixture& wanted)
    {
        if (before_ && Find() && Find()->HasDefinitionOf(wanted) && parts_.manager.IsLibrarySaved())
            return; // It was applied, and nothing has changed since.
        if (!before_)
            before_ = parts_.manager.ReadLibraryFile();
        FindAgain();
        const bool renamed = Change(wanted);
        const bool saved = parts_.manager.SaveLibrary(parts_.wait);
        saved_ = parts_.manager.ReadLibraryFile();
        Show(renamed, saved);
    }

    void TakeBack()
    {
        const bool isBack = !Find() && parts_.manager.GetLEDFixtureByProduct(original_.product);
        if (!before_ || isBack)
            return;
        FindAgain();
        const bool renamed = Change(original_);
        PutFileBack();
        // Not from the file: the library in memory also has what documents have brought into it.
        Show(renamed, false);
    }

private:
    [[nodiscard]] const DeviceLedItem* Find() const
    {
        return parts_.manager.GetLEDFixtureByProduct(present_.product);
    }

    /// A fixture that is gone meanwhile comes anew as it was, so that its elements are known by its
    /// product.
    void FindAgain()
    {
        if (!Find())
            (void)parts_.manager.AddFixture(present_);
    }

    /// Whether the fixture has another name now.
    bool Change(const LEDFixture& wanted)
    {
        const bool renamed =
            wanted.manufacturer != present_.manufacturer || wanted.product != present_.product;
        parts_.manager.ChangeFixture(Find()->uniqueID, wanted);
        present_ = wanted;
        return renamed;
    }

    void Show(bool renamed, bool load)
    {
        if (renamed)
            parts_.list.FollowChange(load);
        parts_.list.ShowFixture(present_.product);
    }

    /// A save would write more than was there, and in a form of its own.
    void PutFileBack()
    {
        const QByteArray now = parts_.manager.ReadLibraryFile();
        if (now == *before_)
            return;
        if (now == saved_ && !before_->isNull())
            parts_.manager.WriteLibraryFile(*before_, parts_.wait);
        else // Another program's, or none.
            parts_.manager.SaveLibrary(parts_.wait);
    }

    const FixtureEditing::Parts& parts_;
    const LEDFixture original_;
    LEDFixture present_;               ///< as the library has it
    std::optional<QByteArray> before_; ///< the user's file before the first change
    QByteArray saved_;                 ///< and after the last one
};

} // namespace

FixtureEditing::FixtureEditing(Parts parts)
    : parts_(std::move(parts))
{}

void FixtureEditing::MakeFixture()
{
    WEFTCustomFixtureSizeDialog size(WEFTCustomFixtureSizeDialog::Create, FixtureLayout(NewSize),
                                     parts_.boxes, &parts_.window);
    if (size.exec() != QDialog::Accepted)
        return;
    DeviceManager& manager = parts_.manager;
    // Values and not words: unchanged they go into the library, which is for all languages.
    WEFTCustomFixtureDialog editor(
        {QStringLiteral("Manufacturer"), QStringLiteral("Product"), FixtureLayout(size.GetSize()),
         manager.GetDeviceModel()->GetManufacturers()},
        false, CheckAgainst(manager, [] { return std::wstring(); }), parts_.boxes, &parts_.window);
    if (editor.exec() != QDialog::Accepted)
        return;
    const LEDFixture fixture = FixtureIn(editor);
    if (!manager.AddFixture(fixture)) {
        ZEN_LOG_ERROR("Unable to create new fixture/pixelmaps.");
        return;
    }
    manager.SetDocumentDirty(true);
    parts_.list.FollowChange(manager.SaveLibrary(parts_.wait));
    parts_.list.ShowFixture(fixture.product);
}

void FixtureEditing::EditSelected()
{
    const DeviceLedItem* fixture = parts_.list.View().SelectedFixture();
    if (!fixture)
        return;
    DeviceManager& manager = parts_.manager;
    const std::wstring product = fixture->product;
    if (manager.GetMappedDeviceModel()->IsFixtureUsed(fixture->uniqueID) &&
        !parts_.boxes.Ask(&parts_.window, tr("Edit Used Fixture"),
                          tr("This fixture is used in your current mapping file.\n\nEditing the "
                             "fixture will affect your current document."),
                          QMessageBox::Yes))
        return;
    fixture = manager.GetLEDFixtureByProduct(product);
    if (!fixture)
        return;
    FixtureEdit edit(parts_, *fixture);
    WEFTCustomFixtureDialog editor(
        {QString::fromStdWString(fixture->manufacturer), QString::fromStdWString(fixture->product),
         FixtureLayout(*fixture), manager.GetDeviceModel()->GetManufacturers()},
        true, CheckAgainst(manager, [&edit] { return edit.Product(); }), parts_.boxes,
        &parts_.window);
    connect(&editor, &WEFTCustomFixtureDialog::apply, this, [&] { edit.Apply(FixtureIn(editor)); });
    if (editor.exec() != QDialog::Accepted) {
        edit.TakeBack();
        return;
    }
    edit.Apply(FixtureIn(editor));
    parts_.undoStack.clear();
    manager.SetDocumentDirty(true);
}
