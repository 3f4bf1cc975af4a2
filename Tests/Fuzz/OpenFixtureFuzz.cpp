// SPDX-License-Identifier: MIT
// Definitions of the Open Fixture Library: whatever the text says, what is imported is sound.
#include "FixtureImport/OpenFixtureReader.h"
#include "Fuzz/Fuzz.h"
#include "Fuzz/SoundImport.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto read = FixtureImport::ReadOpenFixture(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    if (!read.fault && read.redirectTo.isEmpty())
        RequireSoundImport(read.definition);
    return 0;
}
