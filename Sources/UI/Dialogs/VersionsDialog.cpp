// SPDX-License-Identifier: MIT
#include "UI/Dialogs/VersionsDialog.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QDir>
#include <QFontMetrics>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "Model/DocumentSummary.h"
#include "Model/PatchText.h"
#include "UI/Dialogs/LayoutPicture.h"

namespace {

enum : int
{
    SavedColumn,
    ElementsColumn
};
constexpr int PathRole = Qt::UserRole;
constexpr QSize SizeWithVersions(780, 440);
constexpr QSize SizeWhenEmpty(420, 120);
constexpr int Gap = 12;
constexpr QSize SmallPicture(96, 54);
constexpr QSize LargePicture(352, 198);
// As much as there is room for on a small screen of large pixels.
constexpr int MostFixtures = 5;
constexpr int MostRuns = 5;
constexpr int FixtureWidth = 260;

/// With seconds: two saves may come in one minute.
QString TimeText(const QDateTime& time)
{
    return QLocale().toString(time.date(), QLocale::ShortFormat) + QStringLiteral("  ") +
           time.time().toString(QStringLiteral("HH:mm:ss"));
}

/// "12: 0/0 to 0/9, 1/0, 1/4"
QString UniversesText(const DocumentSummary& summary)
{
    if (summary.portAddresses.empty())
        return VersionsDialog::tr("none");
    QStringList texts;
    for (const auto& [first, last] : RunsOfPortAddresses(summary.portAddresses)) {
        if (texts.size() == MostRuns) {
            texts.append(VersionsDialog::tr("and more"));
            break;
        }
        texts.append(
            first == last
                ? UniverseText(first)
                : VersionsDialog::tr("%1 to %2").arg(UniverseText(first), UniverseText(last)));
    }
    return QStringLiteral("%1: %2")
        .arg(summary.portAddresses.size())
        .arg(texts.join(QStringLiteral(", ")));
}

/// A line for each product, the most frequent ones first.
QString FixturesText(const DocumentSummary& summary, const QFontMetrics& metrics)
{
    std::vector<std::pair<QString, int>> fixtures(summary.fixtures.begin(), summary.fixtures.end());
    std::ranges::stable_sort(fixtures, std::ranges::greater(), &std::pair<QString, int>::second);
    QStringList lines;
    for (const auto& [product, count] : fixtures) {
        if (lines.size() == MostFixtures - 1 && fixtures.size() > std::size_t{MostFixtures}) {
            const auto others = fixtures.size() - static_cast<std::size_t>(lines.size());
            lines.append(VersionsDialog::tr("and %1 more kinds").arg(others));
            break;
        }
        lines.append(metrics.elidedText(QStringLiteral("%1 x %2").arg(count).arg(product),
                                        Qt::ElideRight, FixtureWidth));
    }
    return lines.isEmpty() ? VersionsDialog::tr("none") : lines.join(QLatin1Char('\n'));
}

} // namespace

VersionsDialog::VersionsDialog(SavedVersions& versions, QWidget* parent)
    : FixedDialog(versions.List().empty() ? SizeWhenEmpty : SizeWithVersions, parent)
{
    setObjectName(QStringLiteral("VersionsDialog"));
    setWindowTitle(tr("Versions"));
    const auto list = versions.List();
    hintLabel = new QLabel(
        list.empty()
            ? tr("No version is kept yet. Each save keeps one, the last %1 of them, in %2.")
                  .arg(SavedVersions::Most)
                  .arg(QDir::toNativeSeparators(versions.GetFolder()))
            : tr("Each save keeps a version, the last %1 of them. One that you take back replaces "
                 "what is on the canvas, as an import does; the mapping file stays as it is until "
                 "you save.")
                  .arg(SavedVersions::Most));
    hintLabel->setObjectName(QStringLiteral("hintLabel"));
    hintLabel->setTextFormat(Qt::PlainText);
    hintLabel->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(hintLabel);
    if (list.empty())
        layout->addStretch();
    else
        layout->addLayout(MakeVersions(), 1);
    AddButtons(*layout, !list.empty());
    if (!list.empty())
        Fill(versions, list);
}

QHBoxLayout* VersionsDialog::MakeVersions()
{
    versionList = new QTreeWidget;
    versionList->setObjectName(QStringLiteral("versionList"));
    versionList->setAccessibleName(tr("Versions, the newest first"));
    versionList->setHeaderLabels({tr("Saved"), tr("Elements")});
    versionList->setRootIsDecorated(false);
    versionList->setUniformRowHeights(true);
    versionList->setIconSize(SmallPicture);
    versionList->header()->setSectionsMovable(false);
    versionList->header()->setStretchLastSection(false);
    versionList->header()->setSectionResizeMode(SavedColumn, QHeaderView::Stretch);
    versionList->header()->setSectionResizeMode(ElementsColumn, QHeaderView::ResizeToContents);

    layoutPicture = new LayoutPicture;
    layoutPicture->setObjectName(QStringLiteral("layoutPicture"));
    layoutPicture->setAccessibleName(tr("Layout of the version"));
    layoutPicture->setFixedSize(LargePicture);
    auto* details = new QFormLayout;
    details->setVerticalSpacing(Gap / 2);
    canvasLabel = AddDetail(*details, "canvasLabel", tr("Canvas:"));
    networkLabel = AddDetail(*details, "networkLabel", tr("Network:"));
    universesLabel = AddDetail(*details, "universesLabel", tr("Universes:"));
    fixturesLabel = AddDetail(*details, "fixturesLabel", tr("Fixtures:"));
    // The dialog keeps its size from version to version.
    const int line = fontMetrics().lineSpacing();
    universesLabel->setMinimumHeight(2 * line);
    fixturesLabel->setMinimumHeight(MostFixtures * line);

    auto* right = new QVBoxLayout;
    right->setSpacing(Gap);
    right->addWidget(layoutPicture);
    right->addLayout(details);
    right->addStretch();
    auto* row = new QHBoxLayout;
    row->setSpacing(Gap);
    row->addWidget(versionList, 1);
    row->addLayout(right);
    return row;
}

QLabel* VersionsDialog::AddDetail(QFormLayout& form, const char* name, const QString& text)
{
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setAccessibleName(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* caption = new QLabel(text);
    caption->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    form.addRow(caption, label);
    return label;
}

void VersionsDialog::AddButtons(QVBoxLayout& layout, bool withTakeBack)
{
    QDialogButtonBox* buttons = MakeButtons(QDialogButtonBox::Close);
    if (withTakeBack) {
        takeBackButton = buttons->addButton(tr("&Take Back"), QDialogButtonBox::AcceptRole);
        takeBackButton->setObjectName(QStringLiteral("takeBackButton"));
        takeBackButton->setAutoDefault(false);
    }
    // Return in the list must not replace the show that is on stage.
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    layout.addWidget(buttons);
}

void VersionsDialog::Fill(SavedVersions& versions, const std::vector<SavedVersions::Version>& list)
{
    // Until its picture comes a row has the room for it.
    QPixmap empty(SmallPicture);
    empty.fill(Qt::transparent);
    for (const SavedVersions::Version& version : list) {
        auto* item = new QTreeWidgetItem(versionList, {TimeText(version.saved), QString()});
        item->setData(SavedColumn, PathRole, version.path);
        item->setIcon(SavedColumn, QIcon(empty));
        item->setTextAlignment(ElementsColumn, Qt::AlignRight | Qt::AlignVCenter);
    }
    connect(versionList, &QTreeWidget::currentItemChanged, this, &VersionsDialog::ShowCurrent);
    connect(&versions, &SavedVersions::summaryRead, this, &VersionsDialog::TakeSummary);
    versionList->setCurrentItem(versionList->topLevelItem(0));
    versionList->setFocus();
    versions.ReadSummaries(list);
}

QString VersionsDialog::GetPath() const
{
    const QTreeWidgetItem* current = versionList ? versionList->currentItem() : nullptr;
    return current ? current->data(SavedColumn, PathRole).toString() : QString();
}

void VersionsDialog::TakeSummary(const QString& path,
                                 const std::shared_ptr<const DocumentSummary>& summary)
{
    summaries_[path] = summary;
    for (int row = 0; row < versionList->topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = versionList->topLevelItem(row);
        if (item->data(SavedColumn, PathRole).toString() != path)
            continue;
        item->setText(ElementsColumn,
                      summary ? QString::number(summary->elements) : tr("can't be read"));
        if (!summary)
            continue;
        const QPixmap picture = DrawLayout(*summary, SmallPicture, devicePixelRatioF());
        QIcon icon(picture);
        icon.addPixmap(picture, QIcon::Selected); // not tinted
        item->setIcon(SavedColumn, icon);
    }
    if (path == GetPath())
        ShowCurrent();
}

void VersionsDialog::ShowCurrent()
{
    const auto read = summaries_.find(GetPath());
    const auto summary = read == summaries_.end() ? nullptr : read->second;
    takeBackButton->setEnabled(summary != nullptr);
    layoutPicture->Show(summary);
    for (QLabel* label : {canvasLabel, networkLabel, universesLabel, fixturesLabel})
        label->clear();
    if (!summary) {
        canvasLabel->setText(read == summaries_.end() ? tr("Reading...")
                                                      : tr("This version can't be read."));
        return;
    }
    canvasLabel->setText(tr("%1 x %2").arg(summary->canvas.width()).arg(summary->canvas.height()));
    networkLabel->setText(summary->network.isEmpty() ? tr("none") : summary->network);
    universesLabel->setText(UniversesText(*summary));
    fixturesLabel->setText(FixturesText(*summary, fontMetrics()));
}
