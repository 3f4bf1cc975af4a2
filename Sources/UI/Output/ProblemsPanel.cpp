// SPDX-License-Identifier: MIT
#include "UI/Output/ProblemsPanel.h"

#include <algorithm>

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Commands/RemedyCommands.h"
#include "UI/Output/LivePatchCheck.h"
#include "UI/Output/ProblemCounts.h"
#include "UI/Output/ProblemsModel.h"
#include "UI/Widgets/DockList.h"
#include "UI/Widgets/ListColumns.h"
#include "UI/Widgets/TroubleDelegate.h"

ProblemsPanel::ProblemsPanel(const Parts& parts)
    : parts_(parts)
    , model_(new ProblemsModel(parts.manager, this))
    , list_(new DockList)
{
    setObjectName(QStringLiteral("problemsPanel"));
    BuildList();
    summary_ = new QLabel;
    summary_->setObjectName(QStringLiteral("problemsSummary"));
    summary_->setTextFormat(Qt::PlainText);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(summary_);
    column->addWidget(list_, 1);
    column->addWidget(BuildBar());
    connect(&parts_.check, &LivePatchCheck::problemsChanged, this, [this] {
        if (isVisible())
            ShowProblems();
    });
    ShowProblems();
}

ProblemsPanel::~ProblemsPanel() = default;

void ProblemsPanel::BuildList()
{
    list_->SetNames(QStringLiteral("problems"), tr("Problems of the patch"));
    list_->setSortingEnabled(false);
    list_->setRootIsDecorated(false);
    list_->setAllColumnsShowFocus(true);
    list_->setModel(model_);
    list_->setItemDelegate(new TroubleDelegate(TroubleRole, ProblemsModel::SeverityColumn, list_));
    list_->installEventFilter(this);
    columns_ =
        new ListColumns(*list_, {ProblemsModel::SeverityColumn, ProblemsModel::MatterColumn,
                                 ProblemsModel::ElementsColumn, ProblemsModel::UniverseColumn,
                                 ProblemsModel::EffectColumn});
    connect(list_, &QAbstractItemView::activated, this, &ProblemsPanel::ShowElements);
    connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ProblemsPanel::ShowCurrent);
    connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ProblemsPanel::ShowCurrent);
    connect(model_, &QAbstractItemModel::dataChanged, this, &ProblemsPanel::ShowCurrent);
}

QWidget* ProblemsPanel::BuildBar()
{
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    effect_ = new QLabel;
    effect_->setObjectName(QStringLiteral("problemEffect"));
    effect_->setTextFormat(Qt::PlainText);
    effect_->setWordWrap(true);
    effect_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    show_ = new QPushButton(tr("&Show Elements"));
    show_->setObjectName(QStringLiteral("showProblemElements"));
    show_->setToolTip(tr("Select the elements of the problem on the canvas"));
    remedy_ = new QPushButton;
    remedy_->setObjectName(QStringLiteral("remedy"));
    row->addWidget(effect_, 1);
    row->addWidget(show_);
    row->addWidget(remedy_);
    connect(show_, &QPushButton::clicked, this, &ProblemsPanel::ShowElements);
    connect(remedy_, &QPushButton::clicked, this, &ProblemsPanel::Remedy);
    return bar;
}

void ProblemsPanel::SetTakenUniverses(const std::vector<int>& universes)
{
    takenUniverses_.assign(universes.begin(), universes.end());
}

void ProblemsPanel::showEvent(QShowEvent* event)
{
    ShowProblems();
    QWidget::showEvent(event);
}

void ProblemsPanel::ShowProblems()
{
    const std::vector<PatchProblem>& problems = parts_.check.GetProblems();
    model_->Show(problems);
    const ProblemCounts counts = ProblemCounts::Of(problems);
    const QString details = counts.Details();
    if (problems.empty())
        summary_->setText(tr("No problems"));
    else if (problems.size() > ProblemsModel::MostRows)
        summary_->setText(tr("%1. The first %2 are listed.")
                              .arg(details)
                              .arg(static_cast<int>(ProblemsModel::MostRows)));
    else
        summary_->setText(details);
    ShowCurrent();
}

// ---- The chosen problems -----------------------------------------------------------------------

const PatchProblem* ProblemsPanel::Current() const
{
    const QModelIndex current = list_->currentIndex();
    return list_->selectionModel()->isRowSelected(current.row(), {})
               ? model_->GetProblem(current.row())
               : nullptr;
}

/// In the order of their rows, as values: the list may change while they are worked on.
std::vector<PatchProblem> ProblemsPanel::Chosen() const
{
    std::vector<int> rows;
    for (const QModelIndex& index : list_->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::ranges::sort(rows);
    std::vector<PatchProblem> chosen;
    for (const int row : rows) {
        if (const PatchProblem* problem = model_->GetProblem(row))
            chosen.push_back(*problem);
    }
    return chosen;
}

void ProblemsPanel::ShowCurrent()
{
    const PatchProblem* problem = Current();
    effect_->setText(problem ? EffectText(*problem) : QString());
    show_->setEnabled(problem && !problem->elements.empty());
    const QString remedy = problem ? RemedyText(RemedyOf(problem->rule)) : QString();
    remedy_->setVisible(!remedy.isEmpty());
    if (!remedy.isEmpty())
        remedy_->setText(remedy);
}

void ProblemsPanel::ShowElements()
{
    ElementIds ids;
    for (const PatchProblem& problem : Chosen())
        ids.insert(ids.end(), problem.elements.begin(), problem.elements.end());
    if (!ids.empty())
        emit showWanted(ids);
}

/// Of the chosen problems, those that are like the current one.
void ProblemsPanel::Remedy()
{
    const PatchProblem* current = Current();
    if (!current)
        return;
    std::vector<PatchProblem> alike = Chosen();
    std::erase_if(alike, [rule = current->rule](const PatchProblem& problem) {
        return problem.rule != rule;
    });
    if (!PushRemedy(parts_.manager, parts_.undoStack, alike, takenUniverses_))
        effect_->setText(tr("Nothing could be changed: no address is free."));
}

// ---- Keys --------------------------------------------------------------------------------------

/// The window's Copy is for elements, and would take the key.
bool ProblemsPanel::eventFilter(QObject* watched, QEvent* event)
{
    const bool isKey =
        event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (watched != list_ || !isKey || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy))
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        CopyRows();
    event->accept();
    return true;
}

void ProblemsPanel::CopyRows() const
{
    QStringList lines;
    for (const PatchProblem& problem : Chosen())
        lines << ProblemLine(problem, *parts_.manager.GetMappedDeviceModel());
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}
