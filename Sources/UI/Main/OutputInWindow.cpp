// SPDX-License-Identifier: MIT
#include "UI/Main/OutputInWindow.h"

#include <QDockWidget>
#include <QStatusBar>
#include <QTimer>

#include "UI/Editor/EditorController.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Network/HostSettings.h"
#include "UI/Output/LivePatchCheck.h"
#include "UI/Output/ProblemsButton.h"
#include "UI/Output/ProblemsPanel.h"
#include "UI/Output/UniversesPanel.h"
#include "UI/Widgets/ListColumns.h"

OutputInWindow::OutputInWindow(const Parts& parts)
    : check_(std::make_unique<LivePatchCheck>(
          LivePatchCheck::Parts{parts.manager, parts.nodes, parts.engine}))
    , problems_(std::make_unique<ProblemsPanel>(
          ProblemsPanel::Parts{parts.manager, *check_, parts.undoStack}))
    , universes_(std::make_unique<UniversesPanel>(
          UniversesPanel::Parts{parts.manager, parts.nodes, parts.engine, parts.undoStack}))
{}

OutputInWindow::~OutputInWindow() = default;

std::array<MainWindowForm::Dock, 2> OutputInWindow::Docks() const
{
    using enum MainWindowForm::Side;
    return {
        {{"dockWidgetProblems", QT_TRANSLATE_NOOP("WEFTMain", "Problems"),
          QT_TRANSLATE_NOOP("WEFTMain", "&Problems"), problems_.get(), 1, Bottom, "Ctrl+Shift+M"},
         {"dockWidgetUniverses", QT_TRANSLATE_NOOP("WEFTMain", "Universes"),
          QT_TRANSLATE_NOOP("WEFTMain", "&Universes"), universes_.get(), 1, Bottom, "Ctrl+U"}}};
}

void OutputInWindow::ConnectCanvas(EditorController& editor, const WeftMapEditorScene& scene)
{
    QObject::connect(problems_.get(), &ProblemsPanel::showWanted, &editor,
                     &EditorController::SelectAndShow);
    QObject::connect(&editor, &EditorController::selectionHasChanged, universes_.get(),
                     [this, &scene] { universes_->ShowSelection(scene.SelectedIds()); });
    QObject::connect(universes_.get(), &UniversesPanel::selectionWanted, &editor,
                     &EditorController::Select);
    QObject::connect(universes_.get(), &UniversesPanel::showWanted, &editor,
                     &EditorController::SelectAndShow);
}

void OutputInWindow::ConnectHost(const HostSettings& host)
{
    QObject::connect(&host, &HostSettings::usedUniversesReceived, problems_.get(),
                     &ProblemsPanel::SetTakenUniverses);
}

void OutputInWindow::AddCount(QStatusBar& bar)
{
    auto* count = new ProblemsButton(*check_);
    bar.addPermanentWidget(count);
    auto* dock = bar.window()->findChild<QDockWidget*>(QStringLiteral("dockWidgetProblems"));
    QObject::connect(count, &ProblemsButton::clicked, dock, [this, dock] {
        dock->show();
        dock->raise();
        problems_->setFocus();
    });
}

void OutputInWindow::Read(const QSettings& store)
{
    problems_->Columns().Read(store);
    universes_->Read(store);
}

void OutputInWindow::Write(QSettings& store) const
{
    problems_->Columns().Write(store);
    universes_->Write(store);
}

void OutputInWindow::Reset()
{
    problems_->Columns().Reset();
    universes_->Reset();
}

void OutputInWindow::WorkAfter(int milliseconds)
{
    QTimer::singleShot(milliseconds, check_.get(), &LivePatchCheck::WorkBetweenTicks);
}
