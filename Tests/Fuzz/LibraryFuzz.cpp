// SPDX-License-Identifier: MIT
// Fixture libraries, also those inside documents. What was read is written and read again, and
// nothing may change on the way.
#include "Fuzz/InputFile.h"
#include "LibTools/XmlFile.h"
#include "Model/DeviceModel.h"
#include "XmlText/XmlText.h"

#include <cstdlib>
#include <string>

namespace {

std::string TextOf(const DeviceModel& library)
{
    XmlText::Document document;
    library.WriteFixtures(XmlText::AddElement(document, "LEDFixtureLibrary"));
    return XmlText::Print(document);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const InputFile file;
    file.Write(data, size);
    int questions = 0;
    const auto answer = [&](const QString&, const QString&) {
        return ++questions % 3;
    };
    DeviceModel library;
    library.Merge(file.WidePath(), true, answer);
    library.Merge(file.WidePath(), false, answer);

    const std::string written = TextOf(library);
    const std::string bytes = XmlText::Encode(written);
    file.Write(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    const auto keep = [](const QString&, const QString&) {
        return 1;
    };
    DeviceModel again;
    again.Merge(file.WidePath(), true, keep);
    const std::string second = TextOf(again);
    // A fixture that was overwritten stands there twice and one with an empty name reads no more,
    // so the second text may be shorter; from there on it stays.
    const std::string secondBytes = XmlText::Encode(second);
    file.Write(reinterpret_cast<const std::uint8_t*>(secondBytes.data()), secondBytes.size());
    DeviceModel third;
    third.Merge(file.WidePath(), true, keep);
    if (second.size() > written.size() || TextOf(third) != second)
        std::abort();
    return 0;
}
