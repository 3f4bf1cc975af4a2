// SPDX-License-Identifier: MIT
#include "Model/PatchProblem.h"

#include <algorithm>
#include <array>
#include <tuple>

#include <QCoreApplication>
#include <QStringList>

#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/PatchText.h"

namespace {

struct Words
{
    Q_DECLARE_TR_FUNCTIONS(PatchProblem)
};

/// What a rule says. %1 is the universe, %2 and %3 the numbers, %4 the
/// node, %5 the name, %6 the list, %7 the number of elements and %8 the universe that is sent.
struct RuleWords
{
    PatchRule rule;
    const char* matter;
    const char* effect;
    PatchRemedy remedy;
};

constexpr std::array RuleTable = {
    RuleWords{
        PatchRule::OutsideUniverse,
        QT_TRANSLATE_NOOP("PatchProblem",
                          "Begins on channel %2, outside of channels 1 to 512 of universe %1"),
        QT_TRANSLATE_NOOP("PatchProblem", "Nothing of it is sent."), PatchRemedy::FreeAddress},
    RuleWords{
        PatchRule::BeyondUniverse,
        QT_TRANSLATE_NOOP("PatchProblem", "Reaches beyond universe %1: channels %2 to %3, of 512"),
        QT_TRANSLATE_NOOP("PatchProblem", "What lies beyond 512 is not sent."),
        PatchRemedy::FreeAddress},
    RuleWords{PatchRule::SplitPixel,
              QT_TRANSLATE_NOOP("PatchProblem",
                                "The end of universe %1 splits a pixel on channels %2 to %3"),
              QT_TRANSLATE_NOOP("PatchProblem", "That pixel has a wrong colour, and what lies "
                                                "beyond 512 is not sent."),
              PatchRemedy::FreeAddress},
    RuleWords{PatchRule::SharedChannels,
              QT_TRANSLATE_NOOP("PatchProblem",
                                "Channels %2 to %3 of universe %1 are written by %7 elements"),
              QT_TRANSLATE_NOOP("PatchProblem", "Of two on one channel, only one is right."),
              PatchRemedy::FreeAddress},
    RuleWords{PatchRule::MixedUniverse,
              QT_TRANSLATE_NOOP("PatchProblem",
                                "Universe %1 has elements with node Auto, and others with node %4"),
              QT_TRANSLATE_NOOP("PatchProblem",
                                "A node that gets both shows two pictures in turn: it flickers."),
              PatchRemedy::SendToAll},
    RuleWords{PatchRule::OutsideNetwork,
              QT_TRANSLATE_NOOP("PatchProblem", "Node %4 is outside of the network"),
              QT_TRANSLATE_NOOP("PatchProblem", "Nothing is sent to it. Choose another network, or "
                                                "another node for its elements."),
              PatchRemedy::None},
    RuleWords{PatchRule::SilentNode, QT_TRANSLATE_NOOP("PatchProblem", "Node %4 does not answer"),
              QT_TRANSLATE_NOOP("PatchProblem", "Its elements may stay dark. Check its power, its "
                                                "cable and its address, or choose another node."),
              PatchRemedy::None},
    RuleWords{PatchRule::NoPort,
              QT_TRANSLATE_NOOP("PatchProblem", "Node %4 has no port for universe %1"),
              QT_TRANSLATE_NOOP("PatchProblem", "The node is sent the universe and does not put it "
                                                "out. Patch to one of its ports, or set the node."),
              PatchRemedy::None},
    RuleWords{PatchRule::NoSubscriber,
              QT_TRANSLATE_NOOP("PatchProblem", "No node subscribes to universe %1"),
              QT_TRANSLATE_NOOP("PatchProblem", "It is not sent: with auto-unicast a universe goes "
                                                "to the nodes that announced it. Set a node to it, "
                                                "or patch to a universe of one."),
              PatchRemedy::None},
    RuleWords{PatchRule::NotPutOut,
              QT_TRANSLATE_NOOP("PatchProblem", "No node that answers puts out universe %1"),
              QT_TRANSLATE_NOOP("PatchProblem",
                                "It is sent to all, and its elements may stay dark. "
                                "Set a node to it, or patch to a universe of one."),
              PatchRemedy::None},
    RuleWords{PatchRule::OtherSender,
              QT_TRANSLATE_NOOP("PatchProblem", "%4 sends universe %1, too"),
              QT_TRANSLATE_NOOP("PatchProblem", "Nodes mix the two, or show them in turn. Take the "
                                                "universe out there, or patch to another one."),
              PatchRemedy::None},
    RuleWords{PatchRule::ManyBroadcasts,
              QT_TRANSLATE_NOOP("PatchProblem", "%2 universes go to all nodes, 40 times a second"),
              QT_TRANSLATE_NOOP("PatchProblem",
                                "Each node must take in all of them, and slow ones fall behind. "
                                "Choose auto-unicast in the preferences, or nodes for the "
                                "elements."),
              PatchRemedy::None},
    RuleWords{
        PatchRule::MergerTarget,
        QT_TRANSLATE_NOOP("PatchProblem", "Patched into universe %1, on which the merger sends"),
        QT_TRANSLATE_NOOP("PatchProblem", "They overwrite what the merger puts there."),
        PatchRemedy::FreeAddress},
    RuleWords{PatchRule::MergerNode,
              QT_TRANSLATE_NOOP("PatchProblem",
                                "Universe %1 is merged: its elements cannot have node %4"),
              QT_TRANSLATE_NOOP("PatchProblem",
                                "They are sent on universe %8 to all nodes, or to those "
                                "that announce it."),
              PatchRemedy::SendToAll},
    RuleWords{PatchRule::MergerSource,
              QT_TRANSLATE_NOOP("PatchProblem", "Universe %1 is merged and sent on universe %8"),
              QT_TRANSLATE_NOOP("PatchProblem", "Its elements are laid on what is received."),
              PatchRemedy::None},
    RuleWords{PatchRule::SeveralNodes,
              QT_TRANSLATE_NOOP("PatchProblem", "Universe %1 goes to several nodes: %6"),
              QT_TRANSLATE_NOOP("PatchProblem", "Each gets its own elements. All is well if it is "
                                                "meant so."),
              PatchRemedy::None},
    RuleWords{PatchRule::SameUniverse,
              QT_TRANSLATE_NOOP("PatchProblem", "Several nodes put out universe %1: %6"),
              QT_TRANSLATE_NOOP("PatchProblem",
                                "They show the same. All is well if it is meant so; "
                                "else set another universe on one of them."),
              PatchRemedy::None},
    RuleWords{PatchRule::UnusedPorts,
              QT_TRANSLATE_NOOP("PatchProblem", "Nothing is patched to %6 of node %4"),
              QT_TRANSLATE_NOOP("PatchProblem", "What hangs there stays dark."), PatchRemedy::None},
    RuleWords{PatchRule::FixtureChanged,
              QT_TRANSLATE_NOOP("PatchProblem", "\"%5\" has changed in the library"),
              QT_TRANSLATE_NOOP("PatchProblem", "These elements are sent as it was before."),
              PatchRemedy::LibraryDefinition},
    RuleWords{PatchRule::FixtureGone,
              QT_TRANSLATE_NOOP("PatchProblem", "\"%5\" is gone from the library"),
              QT_TRANSLATE_NOOP("PatchProblem", "These elements are sent as before. Import the "
                                                "fixture again to edit it."),
              PatchRemedy::None},
    RuleWords{PatchRule::OffCanvas, QT_TRANSLATE_NOOP("PatchProblem", "Lies beside the canvas"),
              QT_TRANSLATE_NOOP("PatchProblem", "All of its pixels are black."),
              PatchRemedy::OntoCanvas},
    RuleWords{PatchRule::OverEdge,
              QT_TRANSLATE_NOOP("PatchProblem", "Hangs over the edge of the canvas"),
              QT_TRANSLATE_NOOP("PatchProblem", "Its pixels beside the canvas are black."),
              PatchRemedy::OntoCanvas},
    RuleWords{PatchRule::TooSmall,
              QT_TRANSLATE_NOOP("PatchProblem", "Is smaller on the canvas than its %2 × %3 pixels"),
              QT_TRANSLATE_NOOP("PatchProblem", "Neighbouring pixels show the same."),
              PatchRemedy::FitPixels},
};
static_assert([] {
    std::size_t next = 0;
    for (const RuleWords& words : RuleTable) {
        if (words.rule != static_cast<PatchRule>(next++))
            return false;
    }
    return next == static_cast<std::size_t>(PatchRule::TooSmall) + 1;
}());

const RuleWords& WordsOf(PatchRule rule)
{
    return RuleTable[static_cast<std::size_t>(rule)];
}

QString NodeText(const PatchProblem& problem)
{
    QString address = QString::fromStdWString(problem.node);
    if (problem.name.empty())
        return address;
    return Words::tr("\"%1\" (%2)").arg(QString::fromStdWString(problem.name), address);
}

/// In one walk: a name may hold any text.
QString Filled(const QString& words, const PatchProblem& problem)
{
    const std::array<QString, 8> values = {ProblemUniverseText(problem),
                                           QString::number(problem.first),
                                           QString::number(problem.last),
                                           NodeText(problem),
                                           QString::fromStdWString(problem.name),
                                           QString::fromStdWString(problem.list),
                                           QString::number(problem.elements.size()),
                                           UniverseText(problem.first)};
    QString text;
    for (int i = 0; i < words.size(); ++i) {
        const int value = words[i] == QLatin1Char('%') && i + 1 < words.size()
                              ? words[i + 1].digitValue() - 1
                              : -1;
        if (value < 0 || value >= static_cast<int>(values.size())) {
            text += words[i];
            continue;
        }
        text += values[static_cast<std::size_t>(value)];
        ++i;
    }
    return text;
}

} // namespace

std::weak_ordering OrderOf(const PatchProblem& a, const PatchProblem& b)
{
    const auto key = [](const PatchProblem& problem) {
        // Those of no universe come last.
        return std::tuple(-static_cast<int>(problem.trouble), problem.universe < 0,
                          problem.universe, problem.rule,
                          problem.elements.empty() ? 0 : problem.elements.front());
    };
    const auto first = key(a) <=> key(b);
    if (first != 0)
        return first;
    return std::tie(a.node, a.name) <=> std::tie(b.node, b.name);
}

PatchRemedy RemedyOf(PatchRule rule)
{
    return WordsOf(rule).remedy;
}

QString SeverityText(Trouble trouble)
{
    switch (trouble) {
    case Trouble::Fault:
        return Words::tr("Fault");
    case Trouble::Caution:
        return Words::tr("Caution");
    default:
        return Words::tr("Hint");
    }
}

QString MatterText(const PatchProblem& problem)
{
    return Filled(Words::tr(WordsOf(problem.rule).matter), problem);
}

QString EffectText(const PatchProblem& problem)
{
    return Filled(Words::tr(WordsOf(problem.rule).effect), problem);
}

QString RemedyText(PatchRemedy remedy)
{
    switch (remedy) {
    case PatchRemedy::FreeAddress:
        return Words::tr("Give a Free &Address");
    case PatchRemedy::SendToAll:
        return Words::tr("Set the Node to &Auto");
    case PatchRemedy::LibraryDefinition:
        return Words::tr("&Take the Library's Definition");
    case PatchRemedy::OntoCanvas:
        return Words::tr("&Bring onto the Canvas");
    case PatchRemedy::FitPixels:
        return Words::tr("Enlarge to Its &Pixels");
    default:
        return {};
    }
}

QString ProblemUniverseText(const PatchProblem& problem)
{
    return problem.universe < 0 ? QString() : UniverseText(problem.universe);
}

QString ProblemElementsText(const PatchProblem& problem, const MappedDeviceModel& document,
                            int limit)
{
    const auto count = static_cast<int>(problem.elements.size());
    QStringList names;
    for (int i = 0; i < std::min(count, limit); ++i) {
        const MappedLedItem* element =
            document.GetItemByUniqueID(problem.elements[static_cast<std::size_t>(i)]);
        if (element)
            names << QString::fromStdWString(element->description);
    }
    const QString list = names.join(QStringLiteral(", "));
    return count <= limit ? list
                          : Words::tr("%1 and %2 more").arg(list, QString::number(count - limit));
}

QString ProblemLine(const PatchProblem& problem, const MappedDeviceModel& document)
{
    constexpr int limit = 8;
    const QString elements = ProblemElementsText(problem, document, limit);
    const QString matter = MatterText(problem);
    return elements.isEmpty()
               ? Words::tr("%1: %2. %3")
                     .arg(SeverityText(problem.trouble), matter, EffectText(problem))
               : Words::tr("%1: %2. %3 (%4)")
                     .arg(SeverityText(problem.trouble), matter, EffectText(problem), elements);
}
