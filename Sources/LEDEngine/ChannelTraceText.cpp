// SPDX-License-Identifier: MIT
#include "LEDEngine/ChannelTrace.h"

#include <QCoreApplication>
#include <QStringList>

#include "Model/PatchText.h"
#include "Platform/IPv4.h"

namespace {

constexpr std::int64_t OneMillisecond = 1'000'000; ///< in nanoseconds
constexpr std::int32_t LastChannel = 512;

std::int32_t EndChannel(const ChannelTrace& trace)
{
    return trace.firstChannel + trace.channels - 1;
}

/// Whether the pixel begins within the universe and ends beyond it.
bool IsCut(const ChannelTrace& trace)
{
    return trace.firstChannel <= LastChannel && EndChannel(trace) > LastChannel;
}

/// The parts of the line. Each is whole, and they are joined like the entries of a list.
struct TraceWords
{
    Q_DECLARE_TR_FUNCTIONS(ChannelTrace)

public:
    static QString Hex(PixelColour colour)
    {
        return QStringLiteral("#%1%2%3")
            .arg(colour.red, 2, 16, QLatin1Char('0'))
            .arg(colour.green, 2, 16, QLatin1Char('0'))
            .arg(colour.blue, 2, 16, QLatin1Char('0'));
    }
    static QString Picture(const ChannelTrace& trace)
    {
        if (!trace.sample)
            return tr("outside of the picture");
        return tr("picture (%1, %2) %3")
            .arg(trace.sample->place.x)
            .arg(trace.sample->place.y)
            .arg(Hex(trace.sample->colour));
    }
    static QString Shown(PixelColour colour) { return tr("shown as %1").arg(Hex(colour)); }
    static QString Owner(const ChannelTrace& trace)
    {
        // In one step: a description may hold a "%1" of its own.
        const QString name = QString::fromStdWString(trace.element);
        const QString channel = QString::number(trace.fixtureChannel);
        switch (trace.use) {
        case ChannelUse::Kind::Pixel:
            return trace.channels == 1 && !trace.values.empty()
                       ? tr("\"%1\" pixel %2 %3")
                             .arg(name, QString::number(trace.pixel),
                                  QString::fromStdWString(trace.values.front().component))
                       : tr("\"%1\" pixel %2").arg(name, QString::number(trace.pixel));
        case ChannelUse::Kind::Constant:
            return tr("\"%1\" channel %2, constant").arg(name, channel);
        case ChannelUse::Kind::Free:
            return tr("\"%1\" channel %2, free").arg(name, channel);
        case ChannelUse::Kind::Nothing:
            break;
        }
        return tr("\"%1\" channel %2, unused").arg(name, channel);
    }
    static QString Nobody(std::uint32_t sender)
    {
        return sender == 0 ? tr("no fixture here")
                           : tr("received from %1")
                                 .arg(QString::fromStdString(Platform::FormatIPv4(sender)));
    }
    static QString Values(const ChannelTrace& trace)
    {
        if (trace.channels == 1)
            return tr("value %1").arg(trace.values.front().value);
        QStringList values;
        for (const ChannelTrace::Value& value : trace.values)
            values << QStringLiteral("%1 %2").arg(QString::fromStdWString(value.component),
                                                  QString::number(value.value));
        return values.join(QLatin1Char(' '));
    }
    static QString Shared(const ChannelTrace& trace)
    {
        return trace.winner.empty()
                   ? tr("another fixture is patched here, too")
                   : tr("overwritten by \"%1\"").arg(QString::fromStdWString(trace.winner));
    }
    static QString Place(const ChannelTrace& trace)
    {
        const QString universe = UniverseText(trace.target.portAddress);
        const QString first = QString::number(trace.firstChannel);
        const std::int32_t last = IsCut(trace) ? LastChannel : EndChannel(trace);
        return last == trace.firstChannel ? tr("universe %1 channel %2").arg(universe, first)
                                          : tr("universe %1 channels %2 to %3")
                                                .arg(universe, first, QString::number(last));
    }
    static QString Rest() { return tr("the rest lies beyond channel 512 and is not sent"); }
    static QString Merged(std::int32_t patched)
    {
        return tr("merged from %1").arg(UniverseText(patched));
    }
    static QString Route(const ChannelTrace& trace)
    {
        switch (trace.route.way) {
        case UniverseRoute::Way::Broadcast:
            return tr("to all nodes");
        case UniverseRoute::Way::Node:
        case UniverseRoute::Way::Subscribers:
            return trace.receivers.size() == 1 ? Node(trace.receivers.front())
                                               : tr("to the %n node(s) that announced it", nullptr,
                                                    static_cast<int>(trace.receivers.size()));
        case UniverseRoute::Way::HostSends:
        case UniverseRoute::Way::NoSubscriber:
        case UniverseRoute::Way::OutsideNetwork:
        case UniverseRoute::Way::NoNetwork:
        case UniverseRoute::Way::NoPort:
            break;
        }
        return NotSent(trace.route.way, trace.target.node);
    }
    static QString NotSent(UniverseRoute::Way way, const std::wstring& node)
    {
        if (way == UniverseRoute::Way::HostSends)
            return tr("not sent: the media program sends");
        if (way == UniverseRoute::Way::NoSubscriber)
            return tr("not sent: no node announced the universe");
        if (way == UniverseRoute::Way::OutsideNetwork)
            return tr("not sent: %1 is not in the network").arg(QString::fromStdWString(node));
        if (way == UniverseRoute::Way::NoPort)
            return tr("not sent: the Art-Net port is not ours yet");
        return tr("not sent: no network is chosen, or it is not connected");
    }
    static QString Node(const ChannelTrace::Receiver& node)
    {
        const QString address = QString::fromStdString(node.address);
        return node.name.empty()
                   ? tr("to node %1").arg(address)
                   : tr("to node \"%1\" %2").arg(QString::fromStdString(node.name), address);
    }
    static QString CutOff() { return tr("not sent: a universe has the channels 1 to 512"); }
    static QString NotInFrame() { return tr("not in the last frame"); }
    static QString Age(std::int64_t nanoseconds)
    {
        return tr("sent %1 ms ago").arg(nanoseconds / OneMillisecond);
    }
};

/// What becomes of the channels behind our last universe.
QStringList EndOf(const ChannelTrace& trace)
{
    const bool begins = trace.firstChannel >= 1 && trace.firstChannel <= LastChannel;
    if (!begins)
        return {TraceWords::CutOff()};
    if (!trace.route.IsSent())
        return {TraceWords::Route(trace)};
    if (trace.values.empty() || !trace.age)
        return {TraceWords::Route(trace), TraceWords::NotInFrame()};
    return {TraceWords::Route(trace), TraceWords::Age(*trace.age)};
}

} // namespace

QString NotSentText(const UniverseRoute& route, const PatchTarget& target)
{
    return route.IsSent() ? QString() : TraceWords::NotSent(route.way, target.node);
}

QString ChannelTraceText(const ChannelTrace& trace)
{
    QStringList parts;
    if (trace.pixel > 0)
        parts << TraceWords::Picture(trace);
    if (trace.shown)
        parts << TraceWords::Shown(*trace.shown);
    parts << (trace.element.empty() && trace.fixtureChannel == 0 ? TraceWords::Nobody(trace.sender)
                                                                 : TraceWords::Owner(trace));
    if (!trace.values.empty())
        parts << TraceWords::Values(trace);
    if (trace.shared)
        parts << TraceWords::Shared(trace);
    parts << TraceWords::Place(trace);
    if (IsCut(trace))
        parts << TraceWords::Rest();
    if (trace.patched >= 0)
        parts << TraceWords::Merged(trace.patched);
    return (parts + EndOf(trace)).join(QStringLiteral(", "));
}
