// SPDX-License-Identifier: MIT
#include "UI/Library/FixtureExport.h"

#include <set>
#include <utility>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include "LibTools/SameFile.h"
#include "LibTools/XmlFile.h"
#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Library/LEDDeviceListView.h"

namespace {

struct ExportWords
{
    Q_DECLARE_TR_FUNCTIONS(FixtureExport)
};

const QString Suffix = QStringLiteral("wfl");

} // namespace

FixtureExport::FixtureExport(Parts parts)
    : parts_(std::move(parts))
    , folder_(QDir::homePath())
{}

void FixtureExport::Export()
{
    // Before the question: behind it the library may be loaded again.
    const std::set<const DeviceLedItem*> selected = parts_.view.SelectedFixtures();
    const bool areAll = selected.empty();
    XmlText::Document library;
    parts_.manager.GetDeviceModel()->WriteLibrary(library, [&](const DeviceLedItem& fixture) {
        return areAll || selected.contains(&fixture);
    });
    const int all = parts_.manager.GetDeviceListProxy()->CountAll();
    const QString file = AskFile(ExportWords::tr("Export Fixtures: %1 of %2")
                                     .arg(areAll ? all : static_cast<int>(selected.size()))
                                     .arg(all));
    if (file.isEmpty())
        return;
    folder_ = QFileInfo(file).absolutePath();
    if (const SaveResult saved = WriteXmlFile(file.toStdWString(), library, parts_.wait); !saved)
        parts_.boxes.Notify(&parts_.window, ExportWords::tr("Fixtures Not Exported"),
                            ExportWords::tr("The fixtures could not be written to %1.\n\n%2\n\nA "
                                            "file that was there is as it was.")
                                .arg(file, saved.Reason()));
}

/// Empty when nothing is to be written.
QString FixtureExport::AskFile(const QString& caption)
{
    QString file = parts_.boxes.SaveFile(&parts_.window, caption, folder_,
                                         ExportWords::tr("Fixture Library File (*.wfl)"), Suffix);
    if (file.isEmpty())
        return {};
    if (QFileInfo(file).suffix().compare(Suffix, Qt::CaseInsensitive) != 0) {
        file += QLatin1Char('.') + Suffix;
        // The file dialog has asked about the name before this.
        if (QFileInfo::exists(file) &&
            !parts_.boxes.Confirm(
                &parts_.window, caption,
                ExportWords::tr("%1 is there already. Do you want to replace it?").arg(file)))
            return {};
    }
    if (!IsSameFile(file, parts_.manager.GetLibraryPath()))
        return file;
    parts_.boxes.Notify(&parts_.window, ExportWords::tr("Export Fixtures Forbidden"),
                        ExportWords::tr("This file is the library that PixelWeft works with. It is "
                                        "written with every change. Please choose another name."));
    return {};
}
