// SPDX-License-Identifier: MIT
#include "UI/Network/TrafficLamps.h"

#include <cmath>

#include <QDateTime>
#include <QLabel>
#include <QToolBar>

#include "ArtNet/ArtNetPackets.h"
#include "LEDEngine/ArtNetOutput.h"
#include "Language/Language.h"
#include "Model/PatchText.h"
#include "Platform/Clock.h"
#include "Platform/IPv4.h"
#include "Settings/ApplicationMode.h"
#include "UI/Network/NetworkChoice.h"
#include "UI/Widgets/DeskLook.h"
#include "UI/Widgets/LedIndicator.h"

namespace {

constexpr int RefreshMilliseconds = 500;

QString Rounded(double number)
{
    return QString::number(std::lround(number));
}

/// The time of day of a moment of the monotonic clock.
QString TimeOfDay(std::int64_t moment)
{
    constexpr std::int64_t nanosecondsPerMillisecond = 1'000'000;
    const std::int64_t age = Platform::MonotonicNanoseconds() - moment;
    return QDateTime::currentDateTime()
        .addMSecs(-age / nanosecondsPerMillisecond)
        .toString(QStringLiteral("HH:mm:ss"));
}

void Tell(LedIndicator& lamp, const QString& first, const QStringList& lines)
{
    const QString state = lines.join(QLatin1Char('\n'));
    lamp.setAccessibleDescription(state);
    lamp.setToolTip(first + QLatin1Char('\n') + state);
}

} // namespace

TrafficLamps::TrafficLamps(const ArtNetOutput& output, const NetworkChoice& choice,
                           QToolBar& toolBar, QObject* parent)
    : QObject(parent)
    , output_(output)
    , choice_(choice)
    , in_(AddLamp(toolBar, QT_TR_NOOP("Art-Net In: "), "inTrafficLamp", QT_TR_NOOP("In Traffic")))
    , out_(AddLamp(toolBar, QT_TR_NOOP(" Art-Net Out: "), "outTrafficLamp",
                   QT_TR_NOOP("Out Traffic")))
{
    connect(&output, &ArtNetOutput::dataInOn, in_, &LedIndicator::toggleOn);
    connect(&output, &ArtNetOutput::dataOutOn, this, &TrafficLamps::Blink);
    connect(&output, &ArtNetOutput::sourceConflictsChanged, this,
            [this](const std::vector<ArtNetSourceConflict>& conflicts) {
                conflicts_ = conflicts;
                Refresh();
            });
    connect(&timer_, &QTimer::timeout, this, &TrafficLamps::Refresh);
    timer_.start(RefreshMilliseconds);
    InEachLanguage(this, [this] { Refresh(); });
}

LedIndicator* TrafficLamps::AddLamp(QToolBar& toolBar, const char* label, const char* objectName,
                                    const char* name)
{
    auto* words = new QLabel;
    toolBar.addWidget(words);
    auto* lamp = new LedIndicator(&toolBar);
    lamp->setObjectName(QLatin1String(objectName));
    InEachLanguage(lamp, [words, lamp, label, name] {
        words->setText(tr(label));
        lamp->setAccessibleName(tr(name));
    });
    toolBar.addWidget(lamp);
    return lamp;
}

void TrafficLamps::Blink()
{
    if (outIs_ != Out::Dark)
        out_->toggleOn();
}

void TrafficLamps::Refresh()
{
    const std::int64_t now = Platform::MonotonicNanoseconds();
    const ArtNetTraffic in = output_.GetInputTraffic();
    const ArtNetTraffic out = output_.GetOutputTraffic();
    taken_.Read(in.taken, now);
    sent_.Read(out.sent, now);
    failed_.Read(out.failed + out.late, now);
    outIs_ = JudgeOut();
    out_->SetColor(outIs_ == Out::Fails ? WarningColour() : LedIndicator::Green);
    // Of a frame that fails as a whole nothing is told that could light the lamp.
    out_->SetSteady(outIs_ == Out::Fails);
    Tell(*in_, tr(" In Traffic"), InText(in));
    Tell(*out_, tr("Out Traffic"), OutText(out));
}

TrafficLamps::Out TrafficLamps::JudgeOut() const
{
    if (!choice_.IsConnected())
        return Out::Dark;
    if (output_.GetState() != OutputState::UsingLocalSocket)
        return Out::Sends;
    if (failed_.PerSecond() > 0)
        return Out::Fails;
    // Frames for silent nodes alone are made, and nothing of them leaves.
    return sent_.PerSecond() > 0 ? Out::Sends : Out::Dark;
}

// ---- What the tool tips say --------------------------------------------------------------------

QStringList TrafficLamps::InText(const ArtNetTraffic& traffic) const
{
    QStringList lines;
    switch (output_.GetState()) {
    case OutputState::Disabled:
        return {tr("No network: nothing is received")};
    case OutputState::UsingLocalSocket:
        break;
    case OutputState::UsingRemoteSocket:
        return {tr("%1 receives the DMX").arg(ApplicationMode::Instance().HostName())};
    default:
        return {tr("The output is about to begin")};
    }
    const UniverseMerging& merging = output_.GetMerging();
    lines.append(
        tr("Universes: %1 of %2, packets a second: %3")
            .arg(traffic.universesIn)
            .arg(UniverseRunText(merging.GetFromStartAddress(), merging.GetConsecutiveUniverses()),
                 Rounded(taken_.PerSecond())));
    if (!merging.IsEnabled())
        lines.append(tr("The merger is off: what is received is not sent on"));
    lines.append(ConflictLines());
    if (traffic.portError == std::errc::address_in_use)
        lines.append(tr("Nothing is heard: another program on this computer has the Art-Net port "
                        "%1. End that program.")
                         .arg(ArtNetPackets::Port));
    else if (traffic.portError)
        lines.append(
            tr("Nothing is heard: %1").arg(QString::fromStdString(traffic.portError.message())));
    else
        lines.append(tr("No error"));
    return lines;
}

QStringList TrafficLamps::ConflictLines() const
{
    constexpr std::size_t most = 8;
    QStringList lines;
    for (const auto& [portAddress, taken, ignored] : conflicts_) {
        if (lines.size() == most) {
            lines.append(tr("and %1 more").arg(conflicts_.size() - most));
            break;
        }
        lines.append(tr("Sub-net %1, universe %2: %3 counts, %4 is ignored")
                         .arg(portAddress >> 4)
                         .arg(portAddress & 0xF)
                         .arg(QString::fromStdString(Platform::FormatIPv4(taken)),
                              QString::fromStdString(Platform::FormatIPv4(ignored))));
    }
    return lines;
}

QStringList TrafficLamps::OutText(const ArtNetTraffic& traffic) const
{
    const std::size_t universes = output_.GetUniverses().Count();
    QStringList lines;
    switch (output_.GetState()) {
    case OutputState::Disabled:
        return {tr("No network: nothing is sent")};
    case OutputState::UsingLocalSocket:
        lines.append(tr("Universes: %1, packets a second: %2")
                         .arg(universes)
                         .arg(Rounded(sent_.PerSecond())));
        break;
    case OutputState::UsingRemoteSocket:
        lines.append(tr("Universes: %1, sent by %2")
                         .arg(universes)
                         .arg(ApplicationMode::Instance().HostName()));
        break;
    default:
        return {tr("The output is about to begin")};
    }
    if (output_.outputSuspended)
        lines.front() = tr("%1 sends the DMX").arg(ApplicationMode::Instance().HostName());
    else if (!choice_.IsConnected())
        lines.append(tr("The adapter is not connected: nothing leaves. Look at its cable."));
    else if (outIs_ == Out::Dark && universes > 0)
        lines.append(tr("Nothing leaves: no node that answers takes these universes"));
    if (traffic.late > 0)
        lines.append(tr("Packets that were too late and dropped: %1").arg(traffic.late));
    if (traffic.sendErrorTime != 0)
        lines.append(tr("Last error: %1, at %2, packets so far: %3")
                         .arg(QString::fromStdString(traffic.sendError.message()),
                              TimeOfDay(traffic.sendErrorTime))
                         .arg(traffic.failed));
    else if (traffic.late == 0)
        lines.append(tr("No error"));
    return lines;
}
