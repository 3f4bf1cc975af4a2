// SPDX-License-Identifier: MIT
#include "UI/Dialogs/WEFTAboutDialog.h"

#include <QFile>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QTextStream>
#include <QVBoxLayout>

#include "LibTools/Qt5And6.h"
#include "Log/Log.h"
#include "UI/Widgets/Version.h"

namespace {

constexpr int LongestLine = 512;

/// The credits are kept as literals: u8"Text".
QString Plain(QString line)
{
    return line.remove(QStringLiteral("u8\"")).remove(QLatin1Char('"'));
}

QLabel* Line(const QString& name, const QString& text)
{
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignHCenter);
    return label;
}

} // namespace

WEFTAboutDialog::WEFTAboutDialog(QWidget* parent, const QString& creditsFile)
    : FixedDialog({360, 257}, parent)
{
    setObjectName(QStringLiteral("WEFTAboutDialog"));
    setWindowFlags((windowFlags() & ~Qt::WindowMaximizeButtonHint) | Qt::CustomizeWindowHint);
    setWindowTitle(tr("About Zentri PixelWeft"));

    auto* sign = Line(QStringLiteral("labelIcon"), QString());
    sign->setPixmap(QIcon(QStringLiteral(":/bitmaps/PixelWeft.png")).pixmap(64, 64));
    auto* name = Line(QStringLiteral("labelName"), tr("Zentri PixelWeft"));
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    name->setFont(large);
    auto* version =
        Line(QStringLiteral("labelVersion"), tr("Version %1 alpha").arg(ProgramVersion()));
    auto* copyright = Line(QStringLiteral("labelCopyRight"), tr("Copyright"));
    auto* team = Line(QStringLiteral("labelTeam"), tr("Team"));
    team->setWordWrap(true);

    QFile credits(creditsFile);
    if (credits.open(QIODevice::ReadOnly)) {
        QTextStream text(&credits);
        Qt5And6::UseUtf8(text);
        copyright->setText(Plain(text.readLine(LongestLine)));
        team->setText(Plain(text.readLine()));
    } else {
        ZEN_LOG_ERROR("The credits can't be opened: %s", creditsFile.toUtf8().constData());
    }

    auto* layout = new QVBoxLayout(this);
    for (QLabel* label : {sign, name, version, copyright, team})
        layout->addWidget(label);
    layout->addStretch();
    layout->addWidget(MakeButtons(QDialogButtonBox::Ok));
}
