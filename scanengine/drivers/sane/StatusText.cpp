#include "scanengine/drivers/sane/StatusText.h"

namespace scanengine {

QString statusText(SaneStatus status)
{
    switch (status) {
    case SaneStatus::good:
    case SaneStatus::endOfData:
        break;
    case SaneStatus::unsupported:
        return QStringLiteral("The scanner can't scan this way. Choose another paper source or "
                              "resolution and scan again.");
    case SaneStatus::cancelled:
        return QStringLiteral("The scan was stopped at the scanner. When it is ready, scan again.");
    case SaneStatus::deviceBusy:
        return QStringLiteral("The scanner is busy. Wait until it has finished, close other "
                              "programs that use it, and scan again.");
    case SaneStatus::invalid:
        return QStringLiteral("The scanner refused the settings of this scan. Choose another "
                              "resolution or colour mode and scan again.");
    case SaneStatus::jammed:
        return QStringLiteral("The feeder is jammed. Clear it and scan again.");
    case SaneStatus::noDocs:
        return QStringLiteral("There is no paper in the feeder. Put paper in and scan again.");
    case SaneStatus::coverOpen:
        return QStringLiteral("The scanner's cover is open. Close it and scan again.");
    case SaneStatus::ioError:
        return QStringLiteral("The connection to the scanner failed. Check its cable or network, "
                              "switch it off and on, and scan again.");
    case SaneStatus::noMemory:
        return QStringLiteral("There is too little memory for this scan. Close other programs or "
                              "choose a lower resolution, and scan again.");
    case SaneStatus::accessDenied:
        return QStringLiteral("You may not use this scanner. Ask for permission to use scanners "
                              "on this computer, sign in anew, and scan again.");
    }
    return QStringLiteral("The scanner reported a fault. Switch it off and on and scan again.");
}

QString troubleText(WorkerTrouble trouble)
{
    switch (trouble) {
    case WorkerTrouble::notStarted:
        return QStringLiteral("The program that talks to scanners can't be started. Install "
                              "Velmor anew and scan again.");
    case WorkerTrouble::crashed:
        return QStringLiteral("The scanner's driver crashed. Switch the scanner off and on and "
                              "scan again.");
    case WorkerTrouble::hungAtSearch:
        return QStringLiteral("The search for scanners took too long. Switch off scanners and "
                              "network devices that don't answer, and look for scanners again.");
    case WorkerTrouble::hungAtOpen:
        return QStringLiteral("The scanner doesn't answer. Check that it is switched on and "
                              "connected, and scan again.");
    case WorkerTrouble::hungAtStart:
        return QStringLiteral("The scanner didn't begin the page in time. Switch it off and on "
                              "and scan again.");
    case WorkerTrouble::hungInPage:
        return QStringLiteral("The scanner stopped in the middle of a page. Switch it off and on "
                              "and scan again.");
    case WorkerTrouble::deviceVanished:
        return QStringLiteral("The scanner is no longer there. Check that it is switched on and "
                              "connected, and look for scanners again.");
    case WorkerTrouble::serverLost:
        return QStringLiteral("The connection to the computer that shares the scanner was lost. "
                              "Check the network and that computer, and scan again.");
    }
    return statusText(SaneStatus::good);
}

QString waitingForBusyText()
{
    return QStringLiteral("The scanner is busy. Waiting for it…");
}

QString waitingForLampText()
{
    return QStringLiteral("The scanner is warming up. Waiting for it…");
}

QString withSavedPages(const QString &text, qsizetype pages)
{
    if (pages <= 0)
        return text;
    const QString kept = pages == 1
                             ? QStringLiteral("the page before it is saved.")
                             : QStringLiteral("the %1 pages before it are saved.").arg(pages);
    const QString sentence = text.endsWith(u'.') ? text.chopped(1) : text;
    return sentence + QStringLiteral("; ") + kept;
}

} // namespace scanengine
