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
#include <QTimer>
#include <QVBoxLayout>

#include "Language/Language.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/PatchRemedy.h"
#include "UI/Commands/RemedyCommands.h"
#include "UI/Output/LivePatchCheck.h"
#include "UI/Output/ProblemCounts.h"
#include "UI/Output/ProblemsModel.h"
#include "UI/Widgets/DockList.h"
#include "UI/Widgets/ListColumns.h"
#include "UI/Widgets/TroubleDelegate.h"

namespace {

constexpr int NoteMilliseconds = 10'000;

/// Why the remedy left elements as they are.
QString ReasonText(PatchRemedy remedy)
{
    return remedy == PatchRemedy::OntoCanvas
               ? ProblemsPanel::tr("They are larger than the canvas.")
               : ProblemsPanel::tr("No universe that they may be in has so many channels free.");
}

QString OutcomeText(PatchRemedy remedy, const RemedyOutcome& outcome)
{
    if (outcome.left > 0)
        return ProblemsPanel::tr("Elements put right: %1, left as they are: %2. %3")
            .arg(QString::number(outcome.helped), QString::number(outcome.left),
                 ReasonText(remedy));
    return outcome.helped > 0 ? QString() : ProblemsPanel::tr("There was nothing to change.");
}

} // namespace

ProblemsPanel::ProblemsPanel(const Parts& parts)
    : parts_(parts)
    , model_(new ProblemsModel(parts.manager, this))
    , list_(new DockList)
    , noteTimer_(new QTimer(this))
{
    setObjectName(QStringLiteral("problemsPanel"));
    BuildList();
    setFocusProxy(list_);
    noteTimer_->setSingleShot(true);
    noteTimer_->setInterval(NoteMilliseconds);
    connect(noteTimer_, &QTimer::timeout, this, &ProblemsPanel::DropNote);
    connect(list_, &QAbstractItemView::clicked, this, &ProblemsPanel::DropNote);
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
    InEachLanguage(this, [this] {
        show_->setText(tr("&Show Elements"));
        show_->setToolTip(tr("Select the elements of the problem on the canvas"));
        ShowProblems();
    });
}

ProblemsPanel::~ProblemsPanel() = default;

void ProblemsPanel::BuildList()
{
    list_->SetNames("problems", [] { return tr("Problems of the patch"); });
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
    show_ = new QPushButton;
    show_->setObjectName(QStringLiteral("showProblemElements"));
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
    effect_->setText(!note_.isEmpty() ? note_ : problem ? EffectText(*problem) : QString());
    show_->setEnabled(problem && !problem->elements.empty());
    const QString remedy =
        problem && CanBeRemedied(*problem, *parts_.manager.GetMappedDeviceModel())
            ? RemedyText(RemedyOf(problem->rule))
            : QString();
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
    const PatchRemedy remedy = RemedyOf(current->rule);
    note_ =
        OutcomeText(remedy, PushRemedy(parts_.manager, parts_.undoStack, alike, takenUniverses_));
    noteTimer_->start();
    ShowCurrent();
}

void ProblemsPanel::DropNote()
{
    note_.clear();
    ShowCurrent();
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
