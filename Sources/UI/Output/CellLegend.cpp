// SPDX-License-Identifier: MIT
#include "UI/Output/CellLegend.h"

#include <algorithm>
#include <vector>

#include <QCoreApplication>
#include <QMenu>
#include <QPainter>
#include <QWidgetAction>

#include "Language/Language.h"
#include "UI/Output/CellPainter.h"
#include "UI/Widgets/DeskLook.h"

namespace {

struct Example
{
    QString meaning;
    UniverseCell cell;
    int value = CellPainter::NoValue;
    CellPainter::Marks marks;
};

class Legend final : public QWidget
{
    Q_DECLARE_TR_FUNCTIONS(CellLegend)

public:
    Legend()
    {
        InEachLanguage(this, [this] { SayExamples(); });
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), CurrentLook().bar);
        cells_.SetUp(Cell(), font(), devicePixelRatioF());
        QPoint at(Gap, Gap);
        int channel = 1;
        for (const Example& example : examples_) {
            cells_.Paint(painter, at, channel++, example.cell, example.value, example.marks);
            painter.setPen(CurrentLook().barText);
            painter.drawText(
                QRect(at + QPoint(Cell().width() + Gap, 0), QSize(width(), Cell().height())),
                Qt::AlignVCenter, example.meaning);
            at.ry() += Cell().height() + Gap;
        }
    }

private:
    void SayExamples()
    {
        using Ground = UniverseCell::Ground;
        examples_ = {
            {tr("the first channel of an element"),
             {.ground = Ground::Owned, .begins = true},
             194,
             {}},
            {tr("of the same element"), {.ground = Ground::Owned}, 130, {}},
            {tr("two elements write it"),
             {.ground = Ground::Owned, .tint = 1, .shared = true},
             90,
             {}},
            {tr("its pixel goes on beyond channel 512"),
             {.ground = Ground::Owned, .tint = 2, .cut = true},
             60,
             {}},
            {tr("received, of the merged desk"), {.ground = Ground::Received}, 220, {}},
            {tr("free"), {}, CellPainter::NoValue, {}},
            {tr("the element is selected"),
             {.ground = Ground::Owned, .tint = 3, .begins = true, .ends = true},
             40,
             {.selected = true}},
        };
        const QSize cell = Cell();
        int width = 0;
        for (const Example& example : examples_)
            width = std::max(width, fontMetrics().horizontalAdvance(example.meaning));
        setFixedSize(cell.width() + width + 3 * Gap,
                     static_cast<int>(examples_.size()) * (cell.height() + Gap) + Gap);
    }

    static constexpr int Gap = 6;
    [[nodiscard]] QSize Cell() const { return CellPainter::LeastCell(font()); }

    std::vector<Example> examples_;
    CellPainter cells_;
};

} // namespace

CellLegend::CellLegend(QWidget* parent)
    : QToolButton(parent)
{
    setObjectName(QStringLiteral("universeLegend"));
    setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("universeLegendMenu"));
    auto* action = new QWidgetAction(menu);
    action->setDefaultWidget(new Legend);
    menu->addAction(action);
    setMenu(menu);
    InEachLanguage(this, [this] {
        setText(tr("Legend"));
        setToolTip(tr("What the marks of the cells mean"));
    });
}
