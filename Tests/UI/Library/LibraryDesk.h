// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <QtWidgets>

#include "LibTools/W32System.h"
#include "Model/DeviceManager.h"
#include "Settings/FixtureLibraryPath.h"
#include "Support/Literals.h"
#include "Support/Operator.h"
#include "Support/TemporaryFolder.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Library/LibraryPanel.h"

/// The panel of the library in a window, in a home of its own, and a person at it.
class LibraryDesk : public testing::Test
{
protected:
    /// On a library file of this text; without one on that of a new user, the program's fixtures.
    explicit LibraryDesk(const std::string& library = {})
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        home.UseAsHome();
        System::global = std::make_unique<W32System>();
        const QString path = GetFixtureLibraryPath(); // which makes its folder
        if (!library.empty())
            Write(path, library);
        manager = std::make_unique<DeviceManager>(path);
        manager->Initialize();
        manager->LoadLibrary(path);
        // What the operator changes must not keep the output waiting for a slow disk.
        QObject::connect(manager.get(), &DeviceManager::librarySaved,
                         [this] { EXPECT_TRUE(std::exchange(outputGoesOn, false)); });
        panel = std::make_unique<LibraryPanel>(
            LibraryPanel::Parts{*manager, steps, boxes, window, wait});
        window.setCentralWidget(panel->Contents());
        list = window.findChild<LEDDeviceListView*>("treeView"_q);
        panel->FollowLibrary();
        window.show();
        QApplication::setActiveWindow(&window);
        steps.push(new QUndoCommand);
    }
    ~LibraryDesk() override
    {
        EXPECT_TRUE(person.IsDone());
        panel.reset();
        manager.reset();
        System::global.reset();
    }

    static void Write(const QString& path, const std::string& text)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
    }
    /// Of a file in the home.
    [[nodiscard]] QString Path(const std::string& name) const
    {
        return QString::fromStdString((home.Path() / name).string());
    }
    /// The library's.
    [[nodiscard]] static std::string File()
    {
        return Support::ReadBytes(GetFixtureLibraryPath().toStdString());
    }

    Support::TemporaryFolder home;
    WidgetBoxes boxes;
    Support::Operator person;
    QUndoStack steps;
    QMainWindow window;
    bool outputGoesOn = false; ///< while the library is saved
    const DiskWait wait = [this](const std::future<SaveResult>& done) {
        outputGoesOn = true;
        done.wait();
    };
    std::unique_ptr<DeviceManager> manager;
    std::unique_ptr<LibraryPanel> panel;
    LEDDeviceListView* list = nullptr;
};
