// SPDX-License-Identifier: MIT
// The file beside the executable that names the host: understood, it gives one of the three modes.
#include "Fuzz/InputFile.h"
#include "Settings/ApplicationMode.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const InputFile file;
    file.Write(data, size);
    ApplicationMode mode;
    mode.mode = -1;
    const bool understood = mode.LoadFrom(QString::fromStdString(file.Path()));
    if (understood ? mode.mode < 0 || mode.mode > 2 : mode.mode != -1)
        std::abort();
    return 0;
}
