#pragma once

#include "controls/Motion.h"
#include "tests/model/AppModelFixture.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

namespace velmor {

/// The home screen in a window, on a model of its own. Nothing springs or slides: every state is
/// there at once. Fades still take their time.
class CardFixture : public AppModelFixture {
protected:
    void SetUp() override
    {
        view.engine()->addImportPath(QStringLiteral(":/qt/qml"));
        view.setInitialProperties({
            {QStringLiteral("model"), QVariant::fromValue(model.get())}
        });
        QObject::connect(view.engine(), &QQmlEngine::warnings, [](const QList<QQmlError> &errors) {
            for (const QQmlError &error : errors)
                ADD_FAILURE() << error.toString().toStdString();
        });
        view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Velmor/Home/HomeView.qml")));
        ASSERT_EQ(view.status(), QQuickView::Ready);
        Motion::of(*view.engine())->setReduced(true);
        view.setColor(Qt::transparent);
        view.show();
        view.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
        settle();
    }

    /// Lets layout and hover take note of what changed.
    void settle()
    {
        QCoreApplication::sendPostedEvents();
        // Popups are made by the next event, and layouts polished in the next frame.
        QCoreApplication::processEvents();
        view.grabWindow();
    }

    /// The first item of this object name that can be seen, or null. Popovers are included.
    QQuickItem *item(const char *name)
    {
        return find(*view.contentItem(), QString::fromUtf8(name));
    }

    /// The place of an item in the window.
    QRectF place(const char *name)
    {
        QQuickItem *found = item(name);
        return found ? found->mapRectToScene(found->boundingRect()) : QRectF();
    }

    QPoint middle(const char *name) { return place(name).center().toPoint(); }

    void click(const char *name)
    {
        ASSERT_TRUE(item(name)) << name;
        QTest::mouseClick(&view, Qt::LeftButton, {}, middle(name));
        settle();
    }

    void hover(const char *name)
    {
        QTest::mouseMove(&view, middle(name));
        settle();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&view, key, modifiers);
        settle();
    }

    /// The object name of what the keyboard acts on.
    QString focused() const
    {
        return view.activeFocusItem() ? view.activeFocusItem()->objectName() : QString();
    }

    QQuickView view;

private:
    static QQuickItem *find(QQuickItem &root, const QString &name)
    {
        if (!root.isVisible())
            return nullptr;
        if (root.objectName() == name)
            return &root;
        for (QQuickItem *child : root.childItems()) {
            if (QQuickItem *found = find(*child, name))
                return found;
        }
        return nullptr;
    }
};

} // namespace velmor
