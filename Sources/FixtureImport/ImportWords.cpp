// SPDX-License-Identifier: MIT
// What the import tells the operator, in words.
#include <QCoreApplication>

#include "FixtureImport/ImportFault.h"
#include "FixtureImport/ImportedFixture.h"

namespace FixtureImport {

namespace {

struct ImportWords
{
    Q_DECLARE_TR_FUNCTIONS(FixtureImport)
};

QString FileFaultInWords(const ImportFault& fault)
{
    switch (fault.kind) {
    case FaultKind::Missing:
        return ImportWords::tr("There is no such file.");
    case FaultKind::NotPermitted:
        return ImportWords::tr("You are not permitted to read it.");
    case FaultKind::Unreadable:
        return ImportWords::tr("The disk can't read it.");
    case FaultKind::TooLarge:
        return ImportWords::tr("It is larger than any fixture definition.");
    case FaultKind::Damaged:
        return ImportWords::tr("The file is cut off or damaged: %1.").arg(fault.detail);
    case FaultKind::UnknownFormat:
        return ImportWords::tr("It is no fixture definition that PixelWeft knows.");
    case FaultKind::NoModes:
        return ImportWords::tr("It has no fixtures.");
    case FaultKind::LibraryUnread:
        return fault.detail;
    case FaultKind::FixtureUnread:
        return ImportWords::tr("The fixture breaks the rules of a library.");
    case FaultKind::RedirectLost:
        return ImportWords::tr("The file only points to the fixture %1, which isn't there.")
            .arg(fault.detail);
    case FaultKind::RedirectCircle:
        return ImportWords::tr("The file only points to the fixture %1, which points back to it.")
            .arg(fault.detail);
    case FaultKind::RedirectTooLong:
        return ImportWords::tr("The file only points to the fixture %1, by way of too many others.")
            .arg(fault.detail);
    default:
        return {};
    }
}

QString ModeFaultInWords(const ImportFault& fault)
{
    switch (fault.kind) {
    case FaultKind::TooManyModes:
        return ImportWords::tr("The definition has more modes than any fixture.");
    case FaultKind::TooManyChannels:
        return ImportWords::tr("It has %1 channels. A fixture has 512 at most.").arg(fault.detail);
    case FaultKind::NoChannels:
        return ImportWords::tr("It has no channels.");
    case FaultKind::UnknownChannel:
        return ImportWords::tr("The definition doesn't say what the channel \"%1\" does.")
            .arg(fault.detail);
    case FaultKind::UnknownPixel:
        return ImportWords::tr("The definition doesn't say where the pixel \"%1\" is.")
            .arg(fault.detail);
    case FaultKind::GridTooLarge:
        return ImportWords::tr("The definition has more pixels than any fixture.");
    case FaultKind::NoLight:
        return ImportWords::tr("It has no channels for colours or brightness.");
    case FaultKind::Machine:
        return ImportWords::tr("It makes smoke or wind and has no colours.");
    case FaultKind::NoPixelType:
        return ImportWords::tr("No pixel type has these colours in this order: %1.")
            .arg(fault.detail);
    case FaultKind::ColoursApart:
        return ImportWords::tr("The colours of a pixel lie apart: %1.").arg(fault.detail);
    case FaultKind::FineOrder:
        return ImportWords::tr("No pixel type has 16-bit colours in this order: %1.")
            .arg(fault.detail);
    case FaultKind::DifferentPixels:
        return ImportWords::tr("The pixels have no common order: %1.").arg(fault.detail);
    case FaultKind::ColourDoesMore:
        return ImportWords::tr("The colour channel \"%1\" does more than its colour.")
            .arg(fault.detail);
    case FaultKind::DimmerDoesMore:
        return ImportWords::tr("It has no colours, and its dimmer \"%1\" does more than dim.")
            .arg(fault.detail);
    default:
        return {};
    }
}

QString ReasonInWords(ChannelReason reason)
{
    switch (reason) {
    case ChannelReason::FineOfPixel:
        return ImportWords::tr("second byte of a pixel's colour");
    case ChannelReason::OtherColour:
        return ImportWords::tr("colour outside of the pixels, off");
    case ChannelReason::OtherPart:
        return ImportWords::tr("lamp outside of the pixels, off");
    case ChannelReason::Open:
        return ImportWords::tr("open");
    case ChannelReason::Bright:
        return ImportWords::tr("full");
    case ChannelReason::Nothing:
        return ImportWords::tr("no function");
    case ChannelReason::Clear:
        return ImportWords::tr("open place of the wheel");
    case ChannelReason::Middle:
        return ImportWords::tr("middle");
    case ChannelReason::Rest:
        return ImportWords::tr("at its least");
    case ChannelReason::Default:
        return ImportWords::tr("the definition's default, as it names no still value");
    case ChannelReason::First:
        return ImportWords::tr("first value, as the definition names no still one");
    case ChannelReason::Fine:
        return ImportWords::tr("second byte of the channel");
    case ChannelReason::Unused:
        return ImportWords::tr("not used by the mode");
    default:
        return ImportWords::tr("free for a desk");
    }
}

} // namespace

QString InWords(const ImportFault& fault)
{
    const QString words = FileFaultInWords(fault);
    return words.isEmpty() ? ModeFaultInWords(fault) : words;
}

QString InWords(const ImportedChannel& channel)
{
    if (channel.reason == ChannelReason::Pixel)
        return ImportWords::tr("component %1 of pixel %2")
            .arg(channel.component + 1)
            .arg(channel.pixel + 1);
    const QString reason = ReasonInWords(channel.reason);
    return channel.range.isEmpty() ? reason : ImportWords::tr("%1: %2").arg(reason, channel.range);
}

bool ImportedFile::IsWhole() const
{
    if (fault)
        return false;
    for (const ImportedDefinition& definition : definitions) {
        for (const ImportedMode& mode : definition.modes) {
            if (!mode.fixture)
                return false;
        }
    }
    return true;
}

} // namespace FixtureImport
