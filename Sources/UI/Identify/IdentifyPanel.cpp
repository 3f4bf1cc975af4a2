// SPDX-License-Identifier: MIT
#include "UI/Identify/IdentifyPanel.h"

#include <algorithm>
#include <array>

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "Language/Language.h"

namespace {

constexpr int PanelWidth = 340;
constexpr int LongestText = 300; ///< in pixels
constexpr int DistanceToCorner = 16;
constexpr int SwatchSide = 12;

constexpr std::array<IdentifyPanel::Colour, 4> colours = {
    {{Qt::Key_W, QT_TRANSLATE_NOOP("IdentifyPanel", "White"), {255, 255, 255}},
     {Qt::Key_R, QT_TRANSLATE_NOOP("IdentifyPanel", "Red"), {255, 0, 0}},
     {Qt::Key_G, QT_TRANSLATE_NOOP("IdentifyPanel", "Green"), {0, 255, 0}},
     {Qt::Key_B, QT_TRANSLATE_NOOP("IdentifyPanel", "Blue"), {0, 0, 255}}}};

QIcon Swatch(PixelColour colour)
{
    QPixmap picture(SwatchSide, SwatchSide);
    picture.fill(QColor(colour.red, colour.green, colour.blue));
    return picture;
}

} // namespace

std::span<const IdentifyPanel::Colour> IdentifyPanel::Colours()
{
    return colours;
}

IdentifyPanel::IdentifyPanel(QWidget* parent)
    : FixedDialog({PanelWidth, 0}, parent)
{
    setObjectName(QStringLiteral("identifyPanel"));
    InEachLanguage(this, [this] { setWindowTitle(tr("Identify")); });
    // While a tool window has the keyboard, shortcuts of the main window work on. So the letters of
    // its menus, and of the inspector's fields, are taken.
    setWindowFlags(Qt::Tool | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    auto* column = new QVBoxLayout(this);
    number_ = AddLabel("identifyNumber", 2.4);
    description_ = AddLabel("identifyDescription", 1.4);
    address_ = AddLabel("identifyAddress", 2.4);
    channels_ = AddLabel("identifyChannels", 1);
    node_ = AddLabel("identifyNode", 1);
    trouble_ = AddLabel("identifyTrouble", 1);
    trouble_->setWordWrap(true);
    column->addLayout(MakeColours());
    ends_ = AddSwitch("identifyEnds", QT_TR_NOOP("First pixel &blinks red, last pixel blue"), true);
    others_ = AddSwitch("identifyOthersDark", QT_TR_NOOP("Others dar&k"), false);
    column->addStretch();
    column->addLayout(MakeSteps());
}

QLabel* IdentifyPanel::AddLabel(const char* name, double scale)
{
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(scale > 2);
    label->setFont(font);
    layout()->addWidget(label);
    return label;
}

QHBoxLayout* IdentifyPanel::MakeColours()
{
    auto* row = new QHBoxLayout;
    colours_ = new QButtonGroup(this);
    for (const Colour& colour : colours) {
        const QString key = QKeySequence(colour.key).toString(QKeySequence::NativeText);
        auto* button = new QPushButton(Swatch(colour.light), key);
        button->setObjectName(QStringLiteral("identify") + QLatin1String(colour.name));
        InEachLanguage(button, [button, key, name = colour.name] {
            button->setAccessibleName(tr(name));
            button->setToolTip(tr("%1 (%2)").arg(tr(name), key));
        });
        button->setCheckable(true);
        button->setAutoDefault(false);
        colours_->addButton(button, colour.key);
        row->addWidget(button);
    }
    colours_->button(colours.front().key)->setChecked(true);
    connect(colours_, &QButtonGroup::idToggled, this, [this](int, bool on) {
        if (on)
            emit lightChanged();
    });
    return row;
}

QCheckBox* IdentifyPanel::AddSwitch(const char* name, const char* text, bool on)
{
    auto* box = new QCheckBox;
    InEachLanguage(box, [box, text] { box->setText(tr(text)); });
    box->setObjectName(QLatin1String(name));
    box->setChecked(on);
    connect(box, &QCheckBox::toggled, this, &IdentifyPanel::lightChanged);
    layout()->addWidget(box);
    return box;
}

QHBoxLayout* IdentifyPanel::MakeSteps()
{
    auto* row = new QHBoxLayout;
    auto* previous = MakeStep("identifyPrevious", -1);
    row->addWidget(previous);
    auto* next = MakeStep("identifyNext", 1);
    row->addWidget(next);
    row->addStretch();
    auto* close = new QPushButton;
    close->setObjectName(QStringLiteral("identifyClose"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    row->addWidget(close);
    InEachLanguage(this, [previous, next, close] {
        previous->setText(tr("&Previous"));
        previous->setToolTip(tr("Left or Up; with Shift by ten; Home for the first one"));
        next->setText(tr("&Next"));
        next->setToolTip(tr("Right or Down; with Shift by ten; End for the last one"));
        close->setText(tr("Close"));
    });
    next->setDefault(true);
    next->setFocus();
    return row;
}

QPushButton* IdentifyPanel::MakeStep(const char* name, int by)
{
    auto* button = new QPushButton;
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, by] { emit stepped(by); });
    return button;
}

void IdentifyPanel::Show(const Facts& facts)
{
    ShowElided(*number_, facts.number);
    ShowElided(*description_, facts.description);
    ShowElided(*address_, facts.address);
    ShowElided(*channels_, facts.channels);
    ShowElided(*node_, facts.node);
    trouble_->setText(facts.trouble);
    trouble_->setVisible(!facts.trouble.isEmpty());
    setAccessibleDescription(tr("%1: %2, %3").arg(facts.number, facts.description, facts.address));
    FollowTexts();
}

/// As high as its texts want: what they need at least is less, where the style sheet says so.
void IdentifyPanel::FollowTexts()
{
    ensurePolished();
    const int width = std::max(PanelWidth, layout()->totalMinimumSize().width());
    Request({PanelWidth, layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width)
                                                       : layout()->totalSizeHint().height()});
}

/// Descriptions and names of nodes have any length.
void IdentifyPanel::ShowElided(QLabel& label, const QString& text)
{
    const QString shown = label.fontMetrics().elidedText(text, Qt::ElideRight, LongestText);
    label.setText(shown);
    label.setToolTip(shown == text ? QString() : text);
    label.setVisible(!text.isEmpty());
}

bool IdentifyPanel::ChooseColour(int key)
{
    QAbstractButton* button = colours_->button(key);
    if (button)
        button->setChecked(true);
    return button != nullptr;
}

PixelColour IdentifyPanel::ChosenColour() const
{
    const auto isChosen = [key = colours_->checkedId()](const Colour& colour) {
        return colour.key == key;
    };
    return std::ranges::find_if(colours, isChosen)->light;
}

bool IdentifyPanel::MarksEnds() const
{
    return ends_->isChecked();
}

bool IdentifyPanel::OthersDark() const
{
    return others_->isChecked();
}

void IdentifyPanel::OpenAt(const QRect& canvas)
{
    FollowTexts(); // in the look of today
    if (!placed_)
        move(canvas.right() - PanelWidth - DistanceToCorner, canvas.top() + DistanceToCorner);
    placed_ = true;
    show();
    activateWindow();
}

void IdentifyPanel::hideEvent(QHideEvent* event)
{
    FixedDialog::hideEvent(event);
    if (event->spontaneous())
        return;  // The window system hides it with a minimised window, and shows it again.
    move(pos()); // or the desktop would choose another place the next time
    emit closed();
}
