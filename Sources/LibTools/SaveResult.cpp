// SPDX-License-Identifier: MIT
#include "LibTools/SaveResult.h"

#include <QCoreApplication>

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<std::errc, const char*>, 10> Reasons{{
    {std::errc::no_space_on_device,
     QT_TRANSLATE_NOOP("SaveResult", "There is no space left on the disk.")},
    {std::errc::permission_denied,
     QT_TRANSLATE_NOOP("SaveResult", "You are not permitted to write there.")},
    {std::errc::operation_not_permitted,
     QT_TRANSLATE_NOOP("SaveResult", "You are not permitted to write there.")},
    {std::errc::read_only_file_system,
     QT_TRANSLATE_NOOP("SaveResult", "The disk is write-protected.")},
    {std::errc::no_such_file_or_directory, QT_TRANSLATE_NOOP("SaveResult", "The folder is gone.")},
    {std::errc::not_a_directory,
     QT_TRANSLATE_NOOP("SaveResult", "There is a file where its folder should be.")},
    {std::errc::is_a_directory, QT_TRANSLATE_NOOP("SaveResult", "There is a folder of this name.")},
    {std::errc::file_too_large,
     QT_TRANSLATE_NOOP("SaveResult", "The file is larger than the disk takes.")},
    {std::errc::filename_too_long, QT_TRANSLATE_NOOP("SaveResult", "The name is too long.")},
    {std::errc::io_error, QT_TRANSLATE_NOOP("SaveResult", "The disk reports a fault.")},
}};

} // namespace

QString SaveResult::Reason() const
{
    if (!failure_)
        return {};
    for (const auto& [failure, text] : Reasons) {
        if (failure_ == failure)
            return QCoreApplication::translate("SaveResult", text);
    }
    return QString::fromLocal8Bit(failure_.message().c_str()) + QLatin1Char('.');
}
