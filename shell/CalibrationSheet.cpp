#include "shell/CalibrationSheet.h"

#include "calibration/Calibration.h"
#include "windows/WindowPlace.h"

#include <QQmlComponent>

#include <algorithm>
#include <memory>
#include <utility>

namespace velmor {

namespace {

/// From the top of the parent's card to that of the sheet.
constexpr int dropBelowTop = 24;

/// The window, with a `Calibration` of its own; null if its description can't be loaded, which a
/// build makes sure of.
CardWindow *makeWindow(AppModel &model, QQmlEngine &engine)
{
    auto calibration = std::make_unique<Calibration>(model);
    QQmlComponent component(
        &engine, QUrl(QStringLiteral("qrc:/qt/qml/Velmor/Calibration/CalibrationWindow.qml")));
    std::unique_ptr<QObject> made(
        component.isReady()
            ? component.createWithInitialProperties({
                  {QStringLiteral("calibration"), QVariant::fromValue(calibration.get())}
    })
            : nullptr);
    auto *window = qobject_cast<CardWindow *>(made.get());
    if (!window) {
        qWarning("%ls", qUtf16Printable(component.errorString()));
        return nullptr;
    }
    std::ignore = made.release();
    QQmlEngine::setObjectOwnership(window, QQmlEngine::CppOwnership);
    calibration.release()->setParent(window);
    return window;
}

} // namespace

QPoint sheetPosition(const QSize &sheet, const QRect &parent, const QRect &screen)
{
    QPoint place(parent.x() + (parent.width() - sheet.width()) / 2, parent.y() + dropBelowTop);
    if (screen.isEmpty())
        return place;
    // What has no room keeps its top left corner, where its title is.
    place.setX(std::max(screen.left(), std::min(place.x(), screen.right() + 1 - sheet.width())));
    place.setY(std::max(screen.top(), std::min(place.y(), screen.bottom() + 1 - sheet.height())));
    return place;
}

CalibrationSheet::CalibrationSheet(AppModel &model, QQmlEngine &engine, CardWindow &parent)
    : m_model(model), m_engine(engine), m_parent(parent)
{
    connect(&m_model, &AppModel::showCalibrationChanged, this, &CalibrationSheet::follow);
    follow();
}

CalibrationSheet::~CalibrationSheet()
{
    delete m_window;
}

void CalibrationSheet::follow()
{
    if (!m_model.showCalibration())
        close();
    else if (!m_window)
        open();
    else if (m_parent.isActive())
        m_window->requestActivate();
}

void CalibrationSheet::open()
{
    m_window = makeWindow(m_model, m_engine);
    if (!m_window)
        return;
    m_window->setTransientParent(&m_parent);
    m_window->setCardPosition(sheetPosition(m_window->cardSize(), m_parent.cardGeometry(),
                                            usableScreen(m_parent, m_parent.margin())));
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
    m_window->findChild<Calibration *>()->open();
}

void CalibrationSheet::close()
{
    if (!m_window)
        return;
    // It may be in the middle of the click that closes it.
    m_window->hide();
    m_window->deleteLater();
    m_window.clear();
    m_parent.requestActivate();
}

} // namespace velmor
