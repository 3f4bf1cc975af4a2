// SPDX-License-Identifier: MIT
// Fixture libraries, also those inside documents. What was read is written and read again, and
// nothing may change on the way. What the fixture editor makes of it keeps the rules of a layout.
#include "Fuzz/Fuzz.h"
#include "LibTools/XmlFile.h"
#include "Model/DeviceModel.h"
#include "Support/LayoutWalk.h"
#include "XmlText/XmlText.h"

#include <string>

namespace {

std::string TextOf(const DeviceModel& library)
{
    XmlText::Document document;
    library.WriteFixtures(XmlText::AddElement(document, "LEDFixtureLibrary"));
    return XmlText::Print(document);
}

/// Lays pixels and constants as the input says, from its end: bytes there can change while the
/// fixtures stay. The work of one input is bounded.
void LayFixtures(const DeviceModel& library, std::string_view input)
{
    std::size_t taken = 0;
    const Support::Below below = [&](int limit) {
        const auto next = [&] {
            return static_cast<std::uint8_t>(input[input.size() - 1 - taken++ % input.size()]);
        };
        const unsigned number = next() * 256U + next();
        return static_cast<int>(number % static_cast<unsigned>(limit));
    };
    int steps = 24;
    for (const DeviceLedItem* fixture : library.GetFixtures()) {
        FixtureLayout layout(*fixture);
        Require(Support::FaultOf(layout).empty());
        for (int i = 0; i < 8 && steps > 0; ++i, --steps) {
            const auto faulty = Support::FaultyCells(layout);
            if (below(8) == 0)
                Support::ResizeAnyhow(layout, below);
            else
                Support::LayAnyhow(layout, below);
            Require(Support::FaultOf(layout).empty() && Support::FaultyCells(layout) <= faulty);
        }
        if (steps == 0)
            break;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring path = InputFile(BytesOf(data, size)).wstring();
    int questions = 0;
    const auto answer = [&](const QString&, const QString&) {
        return ++questions % 3;
    };
    DeviceModel library;
    library.Merge(path, true, answer);
    library.Merge(path, false, answer);
    LayFixtures(library, BytesOf(data, size));

    const std::string written = TextOf(library);
    const auto readAgain = [&path](const std::string& text) {
        InputFile(XmlText::Encode(text));
        DeviceModel again;
        again.Merge(path, true, [](const QString&, const QString&) { return 1; });
        return TextOf(again);
    };
    // A fixture that was overwritten is written twice and one with an empty name is not read again,
    // so the second text may be shorter; from there on it stays.
    const std::string second = readAgain(written);
    Require(second.size() <= written.size() && readAgain(second) == second);
    return 0;
}
