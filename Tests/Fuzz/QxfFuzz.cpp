// SPDX-License-Identifier: MIT
// QLC+ definitions: whatever the text says, what is imported is sound.
#include "FixtureImport/QxfReader.h"
#include "Fuzz/Fuzz.h"
#include "Fuzz/SoundImport.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto read = FixtureImport::ReadQxf(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    if (!read.fault)
        RequireSoundImport(read.definition);
    return 0;
}
