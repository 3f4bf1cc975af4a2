// SPDX-License-Identifier: MIT
#include "UI/Identify/Identify.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QStringList>

#include "FixtureModel/ChannelUse.h"
#include "FixtureModel/PatchOverlaps.h"
#include "FixtureModel/PatchTarget.h"
#include "LEDEngine/ChannelTrace.h"
#include "LEDEngine/LEDEngine.h"
#include "LEDEngine/UniverseRoute.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/PatchText.h"
#include "Platform/Clock.h"
#include "UI/Identify/IdentifyCanvas.h"

namespace {

constexpr int FactsMilliseconds = 500;
constexpr int LongStep = 10;

/// How far a key steps with nothing but Shift; 0 for any other key.
int StepOf(int key, bool isLong)
{
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        return isLong ? -LongStep : -1;
    case Qt::Key_Right:
    case Qt::Key_Down:
        return isLong ? LongStep : 1;
    case Qt::Key_PageUp:
        return -LongStep;
    case Qt::Key_PageDown:
        return LongStep;
    default:
        return 0;
    }
}

} // namespace

Identify::Identify(const Parts& parts)
    : parts_(parts)
    , actions_(parts.window)
    , panel_(new IdentifyPanel(&parts.window))
{
    action_ = actions_.Add(
        {.objectName = "actionIdentify",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "&Identify"),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Light one fixture after the other on the stage"),
         .shortcut = "F9",
         .checkable = true},
        this, [this] { ActionIdentify(action_->isChecked()); });
    connect(panel_, &IdentifyPanel::stepped, this, &Identify::StepBy);
    connect(panel_, &IdentifyPanel::lightChanged, this, &Identify::Light);
    connect(panel_, &IdentifyPanel::closed, this, &Identify::End);
    followTimer_.setSingleShot(true);
    connect(&followTimer_, &QTimer::timeout, this, &Identify::Follow);
    connect(&factsTimer_, &QTimer::timeout, this, &Identify::ShowFacts);
    const auto followSoon = [this] {
        if (on_)
            followTimer_.start(0);
    };
    const DeviceManager* manager = &parts_.manager;
    connect(manager, &DeviceManager::mappingsChanged, this, followSoon);
    connect(manager, &DeviceManager::elementsPatched, this, followSoon);
    connect(manager, &DeviceManager::elementsRenamed, this, followSoon);
    WatchKeys();
}

// ---- Beginning and end -------------------------------------------------------------------------

void Identify::ActionIdentify(bool on)
{
    if (on)
        Begin();
    else
        End();
}

void Identify::Begin()
{
    on_ = true;
    parts_.canvas.EndGesture();
    const ElementIds selected = parts_.canvas.SelectedIds();
    const bool several = selected.size() > 1;
    walk_.Begin(*parts_.manager.GetMappedDeviceModel(), several ? selected : ElementIds(),
                selected.size() == 1 ? selected.front() : 0);
    ShowCurrent();
    factsTimer_.start(FactsMilliseconds);
    const QWidget& view = parts_.canvas.View();
    panel_->OpenAt({view.mapToGlobal(QPoint()), view.size()});
}

void Identify::End()
{
    if (!on_)
        return;
    const bool showsCurrent = parts_.canvas.SelectedIds() == ElementIds{walk_.Current()};
    const ElementIds chosen = walk_.Chosen();
    Forget();
    if (showsCurrent && !chosen.empty())
        parts_.canvas.Select(chosen);
}

void Identify::Forget()
{
    if (!std::exchange(on_, false))
        return;
    action_->setChecked(false);
    followTimer_.stop();
    factsTimer_.stop();
    walk_ = {};
    parts_.engine.SetIdentified({});
    panel_->hide();
}

// ---- The walk ----------------------------------------------------------------------------------

void Identify::StepBy(int by)
{
    walk_.Step(by);
    ShowCurrent();
}

void Identify::Follow()
{
    const std::int64_t before = walk_.Current();
    walk_.Follow(*parts_.manager.GetMappedDeviceModel());
    if (walk_.Current() == before)
        ShowFacts();
    else
        ShowCurrent();
}

void Identify::SelectionHasChanged()
{
    if (!on_ || selecting_)
        return;
    const ElementIds selected = parts_.canvas.SelectedIds();
    if (selected.size() == 1 && selected.front() != walk_.Current() && walk_.GoTo(selected.front()))
        ShowCurrent();
}

void Identify::ShowCurrent()
{
    // An edit of this very moment, such as an undo, may have taken the address of an element.
    walk_.Follow(*parts_.manager.GetMappedDeviceModel());
    since_ = Platform::MonotonicNanoseconds();
    // Where it was just clicked it is selected, and the mouse may be about to drag it.
    const ElementIds current{walk_.Current()};
    if (walk_.Count() > 0 && parts_.canvas.SelectedIds() != current) {
        const QScopedValueRollback<bool> guard(selecting_, true);
        parts_.canvas.EndGesture(); // or the drag of what was selected would go on with this one
        parts_.canvas.Select(current);
    }
    Light();
    ShowFacts();
}

void Identify::Light()
{
    if (on_)
        parts_.engine.SetIdentified({.element = walk_.Current(),
                                     .colour = panel_->ChosenColour(),
                                     .marksEnds = panel_->MarksEnds(),
                                     .othersDark = panel_->OthersDark(),
                                     .since = since_});
}

// ---- Keys --------------------------------------------------------------------------------------

void Identify::WatchKeys()
{
    panel_->installEventFilter(this);
    for (QWidget* widget : panel_->findChildren<QWidget*>())
        widget->installEventFilter(this);
    parts_.canvas.View().installEventFilter(this);
    parts_.canvas.List().installEventFilter(this);
}

/// A key without a modifier, or an arrow with Shift. What else the canvas does with keys goes on.
bool Identify::TakesKey(const QKeyEvent& key) const
{
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::ShiftModifier)
        return StepOf(key.key(), true) != 0;
    if (modifiers != Qt::NoModifier)
        return false;
    const auto choosesColour = [&key](const IdentifyPanel::Colour& colour) {
        return colour.key == key.key();
    };
    return StepOf(key.key(), false) != 0 || key.key() == Qt::Key_Home || key.key() == Qt::Key_End ||
           key.key() == Qt::Key_Escape ||
           std::ranges::any_of(IdentifyPanel::Colours(), choosesColour);
}

bool Identify::eventFilter(QObject* watched, QEvent* event)
{
    const bool isPress = event->type() == QEvent::KeyPress;
    if (!on_ || !(isPress || event->type() == QEvent::ShortcutOverride))
        return false;
    const QWidget& list = parts_.canvas.List();
    const QWidget* focus = QApplication::focusWidget();
    if (watched == &list && focus != &list && list.isAncestorOf(focus))
        return false; // Keys that the editor of a name has no use for come here.
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (!TakesKey(key))
        return false;
    event->accept();
    if (isPress)
        PressKey(key);
    return true;
}

void Identify::PressKey(const QKeyEvent& key)
{
    if (key.key() == Qt::Key_Escape) {
        End();
        return;
    }
    if (panel_->ChooseColour(key.key()))
        return;
    if (key.key() == Qt::Key_Home)
        walk_.GoToFirst();
    else if (key.key() == Qt::Key_End)
        walk_.GoToLast();
    else
        walk_.Step(StepOf(key.key(), key.modifiers().testFlag(Qt::ShiftModifier)));
    ShowCurrent();
}

// ---- Words -------------------------------------------------------------------------------------

void Identify::ShowFacts()
{
    const MappedLedItem* element =
        parts_.manager.GetMappedDeviceModel()->GetItemByUniqueID(walk_.Current());
    IdentifyPanel::Facts facts;
    if (element && element->GetArtNetMapping())
        facts = FactsOf(*element);
    else
        facts.description = tr("Nothing to identify");
    if (const auto leftOut = walk_.LeftOut(); leftOut > 0) {
        if (!facts.trouble.isEmpty())
            facts.trouble += QLatin1Char('\n');
        facts.trouble += tr("Left out, having no address: %1").arg(leftOut);
    }
    panel_->Show(facts);
}

IdentifyPanel::Facts Identify::FactsOf(const MappedLedItem& element) const
{
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    const DMXMappingArtNet& address = *element.GetArtNetMapping();
    const int channels = element.GetFixture().GetChannelCount();
    const SentChannels sent = ChannelsSent(address.GetChannel(), channels);
    IdentifyPanel::Facts facts;
    facts.number = tr("%1 of %2").arg(walk_.Position() + 1).arg(walk_.Count());
    facts.description = QString::fromStdWString(element.description);
    facts.address = AddressText(address);
    if (!sent.AreNone())
        facts.channels = tr("Universe %1, channels %2 to %3")
                             .arg(UniverseText(address))
                             .arg(sent.first)
                             .arg(sent.last);
    const QModelIndex row = document.GetIndexOfUniqueID(element.uniqueID);
    facts.node =
        tr("Node: %1").arg(row.siblingAtColumn(MappedDeviceModel::NodeColumn).data().toString());
    facts.trouble = TroubleOf(element);
    return facts;
}

/// Why nobody gets what the element is sent; empty when it is sent.
QString Identify::TroubleOfWay(const DMXMappingArtNet& address) const
{
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    const ArtNetOutput& output = parts_.engine.GetOutput();
    const PatchTarget target = TargetOf(address, document.GetMerging());
    const UniverseRoute route =
        RouteOf(output, document.IsAutoUnicast(), target.portAddress, target.node);
    if (route.way == UniverseRoute::Way::HostSends)
        return tr("The media program sends at the moment, so nothing is lit. Choose PixelWeft as "
                  "the sender.");
    if (route.way == UniverseRoute::Way::NoNetwork)
        return tr("No network is chosen, or it is not connected, so nothing is lit.");
    QString reason = NotSentText(route, target);
    if (!reason.isEmpty())
        reason.front() = reason.front().toUpper(); // a line of its own here
    return reason;
}

QString Identify::TroubleOf(const MappedLedItem& element) const
{
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    const DMXMappingArtNet& address = *element.GetArtNetMapping();
    QStringList lines;
    if (const QString way = TroubleOfWay(address); !way.isEmpty())
        lines << way;
    if (element.GetFixture().pixelMap.GetHighestChannel() == 0)
        lines << tr("The fixture has no pixels that could be lit.");
    if (!IsMerged(address, document.GetMerging()) &&
        std::ranges::count(ChannelUsesOf(element.GetFixture()), ChannelUse::Kind::Free,
                           &ChannelUse::kind) > 0)
        lines << tr("Channels that are left to a desk are sent as 0, so a dimmer among them keeps "
                    "the fixture dark. Merge the desk's DMX, or give them a value in the fixture.");
    const QString faults =
        document.GetIndexOfUniqueID(element.uniqueID).data(Qt::ToolTipRole).toString();
    if (!faults.isEmpty())
        lines << faults;
    return lines.join(QLatin1Char('\n'));
}
