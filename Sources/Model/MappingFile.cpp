// SPDX-License-Identifier: MIT
#include "Model/MappingFile.h"

#include <QCoreApplication>
#include <QLocale>
#include <QSet>

#include "Log/Log.h"
#include "Model/DeviceModel.h"
#include "Model/DocumentNetwork.h"
#include "Platform/Text.h"
#include "XmlText/XmlText.h"

namespace {

constexpr std::size_t LongestNodeAddress = 64;
constexpr int MostLinesOfLost = 10;
constexpr int LongestNameShown = 60;

QString Text(const char* text)
{
    return QCoreApplication::translate("MappingFile", text);
}

/// Text of a file, which may be of any length.
QString Shown(const std::optional<std::wstring>& text)
{
    const QString whole = QString::fromStdWString(text.value_or(std::wstring())).simplified();
    return whole.size() <= LongestNameShown ? whole
                                            : whole.left(LongestNameShown) + QStringLiteral("...");
}

QString InWords(ElementFault fault, const tinyxml2::XMLElement& element)
{
    switch (fault) {
    case ElementFault::NoDescription:
        return Text(QT_TRANSLATE_NOOP("MappingFile", "it has no description"));
    case ElementFault::NoFixture:
        return Text(QT_TRANSLATE_NOOP("MappingFile", "it names no fixture"));
    case ElementFault::UnknownFixture:
        return Text(QT_TRANSLATE_NOOP("MappingFile", "its fixture \"%1\" is unknown"))
            .arg(Shown(XmlText::Attribute(element, "fixture")));
    case ElementFault::Place:
        return Text(QT_TRANSLATE_NOOP("MappingFile", "its place on the canvas is damaged"));
    case ElementFault::Address:
        return Text(QT_TRANSLATE_NOOP("MappingFile", "its address is damaged"));
    case ElementFault::None:
        break;
    }
    return {};
}

void MergeFixtures(DeviceModel& library, const XmlFile& file)
{
    library.Merge(file, true, [](const QString&, const QString&) { return KeepFixture; });
}

/// A line for the log, and a sentence for the operator.
QString Fail(const char* line, const char* sentence)
{
    ZEN_LOG_ERROR("%s", line);
    return Text(sentence);
}

} // namespace

MappingFile::MappingFile(const QString& path, const DeviceModel& library)
    : path_(path)
    , file_(std::make_unique<XmlFile>(path.toStdWString()))
{
    fault_ = Read(library);
}

MappingFile::~MappingFile() = default;
MappingFile::MappingFile(MappingFile&& other) noexcept = default;
MappingFile& MappingFile::operator=(MappingFile&& other) noexcept = default;

QString MappingFile::Read(const DeviceModel& library)
{
    if (!file_->IsReadable()) {
        ZEN_LOG_ERROR("Could not read mapping XML file");
        return InWords(file_->Fault());
    }
    const auto* mapping = file_->Document().FirstChildElement("Mapping");
    if (!mapping)
        return Fail("No Mapping node found",
                    QT_TRANSLATE_NOOP("MappingFile", "It holds no mapping."));
    QString fault = ReadHeader(*mapping);
    if (!fault.isEmpty())
        return fault;
    merging_ = UniverseMerging::FromXml(file_->Document());
    ReadNodes();
    ReadElements(*mapping, library);
    return {};
}

QString MappingFile::ReadHeader(const tinyxml2::XMLElement& mapping)
{
    constexpr const char* noVersion =
        QT_TRANSLATE_NOOP("MappingFile", "The version of the mapping is missing or damaged.");
    constexpr const char* noSize =
        QT_TRANSLATE_NOOP("MappingFile", "The size of its canvas is missing or damaged.");
    const char* version = mapping.Attribute("version");
    if (!version)
        return Fail("Mapping version not defined", noVersion);
    const auto versionNumbers = XmlText::ParseIntPair(version, '.');
    if (!versionNumbers)
        return Fail("Mapping version syntax error", noVersion);
    const char* resolution = mapping.Attribute("resolution");
    if (!resolution)
        return Fail("Mapping resolution not defined", noSize);
    const auto size = XmlText::ParseIntPair(resolution, ',');
    if (!size)
        return Fail("Mapping resolution syntax error", noSize);
    if (!IsCanvasSide(size->first) || !IsCanvasSide(size->second)) {
        const QLocale locale;
        return Fail("Mapping resolution out of range",
                    QT_TRANSLATE_NOOP("MappingFile",
                                      "Its canvas of %1 x %2 pixels is impossible: a canvas has 1 "
                                      "to %3 pixels on each side."))
            .arg(locale.toString(size->first), locale.toString(size->second),
                 locale.toString(MappingFile::MaxCanvasSide));
    }
    auto name = XmlText::Attribute(mapping, "name");
    if (!name)
        return Fail("Mapping name not defined",
                    QT_TRANSLATE_NOOP("MappingFile", "The name of the mapping is missing."));
    header_ = {*versionNumbers,
               *size,
               std::move(*name),
               DocumentNetwork(mapping),
               XmlText::ReadInt(mapping, "autoUnicast").value != 0,
               XmlText::ReadInt(mapping, "artSync").value != 0};
    return {};
}

void MappingFile::ReadNodes()
{
    const auto* list = file_->Document().FirstChildElement("ManualNetworkNodes");
    if (!list)
        return;
    bool ended = false; // by the first node without a name
    for (const auto* child = list->FirstChildElement("ManualNode"); child;
         child = child->NextSiblingElement("ManualNode"))
    {
        ++nodeCount_;
        const auto nodeName = XmlText::Attribute(*child, "Name");
        const auto address = XmlText::Attribute(*child, "IP");
        ended = ended || !nodeName;
        if (ended || !address)
            continue;
        ArtNetNodeRecord record;
        record.name = Platform::WideToUtf8(*nodeName);
        record.ip = Platform::WideToUtf8(address->substr(0, LongestNodeAddress));
        record.manual = true;
        nodes_.push_back(std::move(record));
    }
}

void MappingFile::ReadElements(const tinyxml2::XMLElement& mapping, const DeviceModel& library)
{
    std::optional<DeviceModel> ofFile; // which most files can be read without
    const auto fixturesFor = [&](const std::optional<std::wstring>& product) -> const DeviceModel& {
        if (!product || library.GetLEDFixtureByProduct(*product))
            return library;
        if (!ofFile)
            MergeFixtures(ofFile.emplace(), *file_);
        return *ofFile;
    };
    for (const auto* element = mapping.FirstChildElement("Element"); element;
         element = element->NextSiblingElement("Element"))
    {
        ++count_;
        ElementFault fault = ElementFault::None;
        auto item = MappedLedItem::FromXml(
            *element, fixturesFor(XmlText::Attribute(*element, "fixture")), fault);
        if (item) {
            item->uniqueID = count_;
            elements_.push_back(std::move(item));
            continue;
        }
        QString name = Shown(XmlText::Attribute(*element, "description"));
        if (name.isEmpty())
            name = Text(QT_TRANSLATE_NOOP("MappingFile", "Element %1")).arg(count_);
        lost_ << QStringLiteral("%1: %2").arg(name, InWords(fault, *element));
    }
}

void MappingFile::SettleConflicts(const DeviceModel& library)
{
    Settle(library, ConflictAnswers());
}

void MappingFile::SettleConflictsByUse(const DeviceModel& library)
{
    QSet<QString> used;
    for (const auto& element : elements_)
        used.insert(QString::fromStdWString(element->GetFixture().product));
    Settle(library, [&used](const QString&, const QString& product) {
        return used.contains(product) ? OverwriteFixture : KeepFixture;
    });
}

void MappingFile::Settle(const DeviceModel& library, const FixtureConflictCallback& answer)
{
    DeviceModel ofFile;
    MergeFixtures(ofFile, *file_);
    for (const DeviceLedItem* fixture : ofFile.GetFixtures()) {
        const DeviceLedItem* known = library.GetLEDFixtureByProduct(fixture->product);
        if (!known || known->pixelMap == fixture->pixelMap)
            continue;
        const QString product = QString::fromStdWString(fixture->product);
        conflictAnswers_[product] = answer(QString::fromStdWString(fixture->manufacturer), product);
    }
}

FixtureConflictCallback MappingFile::ConflictAnswers() const
{
    return [answers = conflictAnswers_](const QString& manufacturer, const QString& product) {
        const auto& ask = DeviceModel::defaultConflictCallback;
        if (answers.contains(product))
            return answers[product];
        return ask ? ask(manufacturer, product) : static_cast<int>(KeepFixture);
    };
}

QString MappingFile::Losses() const
{
    QStringList losses;
    if (!lost_.isEmpty())
        losses << LostElements();
    if (HasLostNodes())
        losses << Text(QT_TRANSLATE_NOOP("MappingFile",
                                         "%1 of its %2 manual nodes can't be read: a node needs a "
                                         "name and an address, and those behind one without a name "
                                         "are left out."))
                      .arg(nodeCount_ - nodes_.size())
                      .arg(nodeCount_);
    return losses.join(QStringLiteral("\n\n"));
}

QString MappingFile::LostElements() const
{
    QStringList lines = lost_.mid(0, MostLinesOfLost);
    if (lost_.size() > lines.size())
        lines << Text(QT_TRANSLATE_NOOP("MappingFile", "and %1 more"))
                     .arg(lost_.size() - lines.size());
    return Text(QT_TRANSLATE_NOOP("MappingFile", "%1 of its %2 elements can't be read:\n\n%3"))
        .arg(lost_.size())
        .arg(count_)
        .arg(lines.join(QLatin1Char('\n')));
}
