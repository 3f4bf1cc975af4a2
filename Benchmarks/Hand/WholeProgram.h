// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QApplication>
#include <QMessageBox>
#include <QStyleFactory>
#include <QTest>
#include <QTimer>

#include "ArtNet/ZenArtNetService.h"
#include "DebugVariables/DebugVariables.h"
#include "Log/Log.h"
#include "Platform/Locale.h"
#include "Support/TemporaryFolder.h"

/// What the program's own main makes before its window, in a home of its own. Comes behind
/// Stage::Enter; the window ends before it.
class WholeProgram
{
public:
    WholeProgram(int& argc, char** argv)
        : application_((Prepare(), argc), argv)
    {
        Platform::UseUtf8TextAndPlainNumbers();
        Zen::ArtNetService::SetGlobal(
            std::make_shared<Zen::ArtNetService>("Zentri PixelWeft", "#0001 [0001] Ready", false));
        Zen::DebugVariables::SetGlobal(std::make_shared<Zen::DebugVariables>());
        QObject::connect(&answer_, &QTimer::timeout, [] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                QTest::keyClick(box, Qt::Key_Return);
        });
        answer_.start(100);
    }
    ~WholeProgram()
    {
        Zen::DebugVariables::SetGlobal(nullptr);
        Zen::ArtNetService::SetGlobal(nullptr);
        Zen::Log::SetGlobal(nullptr);
    }
    WholeProgram(const WholeProgram&) = delete;
    WholeProgram& operator=(const WholeProgram&) = delete;

    [[nodiscard]] const Support::TemporaryFolder& Home() const { return home_; }
    /// Until then boxes are answered with their default.
    void LeaveBoxesOpen() { answer_.stop(); }

private:
    void Prepare()
    {
        home_.UseAsHome();
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    }

    Support::TemporaryFolder home_;
    QApplication application_;
    QTimer answer_;
};
