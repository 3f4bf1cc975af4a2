// SPDX-License-Identifier: MIT
// The file beside the executable that names the host: one of the three modes, or none.
#include "Fuzz/Fuzz.h"
#include "Settings/ApplicationMode.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const InputFile file;
    file.Write(data, size);
    ApplicationMode mode;
    mode.mode = -1;
    const bool understood = mode.LoadFrom(QString::fromStdString(file.Path()));
    Require(understood ? mode.mode >= 0 && mode.mode <= 2 : mode.mode == -1);
    return 0;
}
