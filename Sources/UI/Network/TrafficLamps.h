// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QObject>
#include <QStringList>
#include <QTimer>

#include "ArtNet/ArtNetSourceConflict.h"
#include "LEDEngine/RateMeter.h"

class ArtNetOutput;
class LedIndicator;
class NetworkChoice;
class QToolBar;
struct ArtNetTraffic;

/// The two lamps of the tool bar. In lights for DMX that we take. Out lights while frames leave, is
/// amber when sends fail or come too late, and dark when nothing can leave. The tool tips say how
/// many universes and packets there are and what went wrong last.
class TrafficLamps : public QObject
{
    Q_OBJECT

public:
    /// The output, the choice and the tool bar, which gets and owns the lamps, outlive this object.
    TrafficLamps(const ArtNetOutput& output, const NetworkChoice& choice, QToolBar& toolBar,
                 QObject* parent);

    /// Reads the counters and shows what they say. Runs by itself twice a second, and comes when
    /// the adapters changed.
    void Refresh();

private:
    enum class Out
    {
        Dark,
        Sends,
        Fails
    };

    static LedIndicator* AddLamp(QToolBar& toolBar, const char* label, const char* objectName,
                                 const char* name);
    [[nodiscard]] Out JudgeOut() const;
    [[nodiscard]] QStringList InText(const ArtNetTraffic& traffic) const;
    [[nodiscard]] QStringList OutText(const ArtNetTraffic& traffic) const;
    [[nodiscard]] QStringList ConflictLines() const;
    void Blink();

    const ArtNetOutput& output_;
    const NetworkChoice& choice_;
    LedIndicator* in_;
    LedIndicator* out_;
    Out outIs_ = Out::Dark;
    std::vector<ArtNetSourceConflict> conflicts_;
    RateMeter taken_;
    RateMeter sent_;
    RateMeter failed_; ///< with those that came too late
    QTimer timer_;
};
