// SPDX-License-Identifier: MIT
#include <memory>

#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

#include "ArtNet/ZenArtNetService.h"
#include "DebugVariables/DebugVariables.h"
#include "Platform/Locale.h"
#include "Support/Stage.h"
#include "Support/TemporaryFolder.h"

int main(int argc, char** argv)
{
    Stage::Enter(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    const Support::TemporaryFolder home;
    home.UseAsHome();
    qputenv("LANGUAGE", "en"); // whatever the machine speaks
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    const QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9)); // what desktops have
    Platform::UseUtf8TextAndPlainNumbers();
    Zen::ArtNetService::SetGlobal(
        std::make_shared<Zen::ArtNetService>("Zentri PixelWeft", "#0001 [0001] Ready", false));
    Zen::DebugVariables::SetGlobal(std::make_shared<Zen::DebugVariables>());
    const int result = RUN_ALL_TESTS();
    Zen::DebugVariables::SetGlobal(nullptr);
    Zen::ArtNetService::SetGlobal(nullptr);
    return result;
}
