#include "browser/GalleryPanel.h"

#include "browser/DrawerPlacement.h"
#include "controls/Motion.h"
#include "windows/WindowPlace.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QScreen>

namespace velmor {

namespace {

/// Milliseconds. Closing is the quicker one.
constexpr int openingTime = 220;
constexpr int closingTime = 160;
/// How far to the left of its place the drawer starts, in logical pixels.
constexpr qreal slideIn = 14;

QEasingCurve curve(const QPointF &first, const QPointF &second)
{
    QEasingCurve easing(QEasingCurve::BezierSpline);
    easing.addCubicBezierSegment(first, second, {1, 1});
    return easing;
}

QEasingCurve easeOut()
{
    return curve({0, 0}, {0.58, 1});
}
QEasingCurve easeIn()
{
    return curve({0.42, 0}, {1, 1});
}

bool isMotionReduced(const GalleryPanel &panel)
{
    const Motion *motion = Motion::of(*qmlEngine(&panel));
    return motion && motion->isReduced();
}

} // namespace

GalleryPanel::GalleryPanel(QQuickItem *parent) : QQuickItem(parent)
{
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    connect(&m_animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &progress) { step(progress.toReal()); });
    connect(&m_animation, &QVariantAnimation::finished, this, &GalleryPanel::arrive);
}

GalleryPanel::~GalleryPanel() = default;

void GalleryPanel::setPresented(bool presented)
{
    if (presented == m_isPresented)
        return;
    m_isPresented = presented;
    update();
    Q_EMIT isPresentedChanged();
}

void GalleryPanel::componentComplete()
{
    QQuickItem::componentComplete();
    update();
}

void GalleryPanel::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange)
        update();
}

void GalleryPanel::update()
{
    auto *parent = qobject_cast<CardWindow *>(window());
    if (!parent || !isComponentComplete())
        return;
    if (m_isPresented && !m_shown) {
        if (!m_child && !make())
            return;
        if (!m_attachment || m_attachment->parentWindow() != parent)
            m_attachment = std::make_unique<WindowAttachment>(*parent, *m_child);
        position(*parent);
        animateIn();
        m_shown = true;
    } else if (!m_isPresented && m_shown) {
        if (m_child)
            animateOut();
        m_shown = false;
    }
}

/// Makes the window. False if its description can't be loaded, which a build makes sure of.
bool GalleryPanel::make()
{
    QQmlEngine *engine = qmlEngine(this);
    if (!engine)
        return false;
    QQmlComponent component(engine,
                            QUrl(QStringLiteral("qrc:/qt/qml/Velmor/Browser/DrawerWindow.qml")));
    const QVariantMap properties{
        {QStringLiteral("content"), QVariant::fromValue(m_content)}
    };
    std::unique_ptr<QObject> made(
        component.isReady() ? component.createWithInitialProperties(properties, qmlContext(this))
                            : nullptr);
    if (!qobject_cast<GalleryWindow *>(made.get())) {
        qWarning("%ls", qUtf16Printable(component.errorString()));
        return false;
    }
    m_child.reset(static_cast<GalleryWindow *>(made.release()));
    QQmlEngine::setObjectOwnership(m_child.get(), QQmlEngine::CppOwnership);
    connect(m_child.get(), &GalleryWindow::closeAsked, this, [this] { setPresented(false); });
    const auto *parent = qobject_cast<CardWindow *>(window());
    if (!isPlaceKnown() && parent && parent->screen())
        m_child->setCardSize(drawerSizeBesideCentre({m_child->cardSize(), m_child->smallestCard()},
                                                    parent->cardWidth(),
                                                    parent->screen()->size().width()));
    return true;
}

void GalleryPanel::position(CardWindow &parent)
{
    // Window managers keep the whole window on the screen, and that includes the shadow.
    const DrawerPlacement placement =
        placeDrawer({m_child->cardSize(), m_child->smallestCard()}, parent.cardGeometry(),
                    usableScreen(parent, m_child->margin()));
    m_child->setCardSize(placement.drawer.size());
    m_child->setPlace(placement.drawer.topLeft());
    m_attachment->keepOffset(placement.parent, placement.drawer.topLeft());
    if (placement.parent != parent.cardGeometry().topLeft())
        parent.setCardPosition(placement.parent);
}

void GalleryPanel::animateIn()
{
    m_animation.stop();
    const bool fresh = !m_child->isVisible();
    m_presenceBefore = fresh ? 0 : m_child->presence();
    m_slideBefore = !fresh ? m_child->slide() : isMotionReduced(*this) ? 0 : -slideIn;
    step(0);
    m_child->show();
    m_attachment->activateChild();
    m_animation.setDuration(openingTime);
    m_animation.setEasingCurve(easeOut());
    m_animation.start();
}

void GalleryPanel::animateOut()
{
    m_animation.stop();
    m_presenceBefore = m_child->presence();
    m_slideBefore = m_child->slide();
    m_animation.setDuration(closingTime);
    m_animation.setEasingCurve(easeIn());
    m_animation.start();
}

/// On the way in the drawer goes to its place; on the way out it stays where it is.
void GalleryPanel::step(qreal progress)
{
    const qreal presence = m_isPresented ? 1 : 0;
    m_child->setPresence(m_presenceBefore + progress * (presence - m_presenceBefore));
    if (m_isPresented)
        m_child->setSlide(m_slideBefore * (1 - progress));
}

void GalleryPanel::arrive()
{
    if (!m_shown)
        m_child->hide();
}

} // namespace velmor
