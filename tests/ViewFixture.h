#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <gtest/gtest.h>

namespace velmor {

/// A view in a window, on top of a fixture that has what the view shows. What QML warns of fails
/// the test.
template <typename Base> class ViewFixture : public Base {
protected:
    /// Loads the view, with its required properties.
    void load(const QString &url, const QVariantMap &properties)
    {
        view.engine()->addImportPath(QStringLiteral(":/qt/qml"));
        view.setInitialProperties(properties);
        QObject::connect(view.engine(), &QQmlEngine::warnings, [](const QList<QQmlError> &errors) {
            for (const QQmlError &error : errors)
                ADD_FAILURE() << error.toString().toStdString();
        });
        view.setSource(QUrl(url));
        ASSERT_EQ(view.status(), QQuickView::Ready);
    }

    /// Shows it and gives it the keyboard.
    void show()
    {
        view.show();
        view.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
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
        return found ? found->mapRectToScene(QRectF(QPointF(), found->size())) : QRectF();
    }

    QPoint middle(const char *name) { return place(name).center().toPoint(); }

    void click(const char *name)
    {
        ASSERT_TRUE(item(name)) << name;
        QTest::mouseClick(&view, Qt::LeftButton, {}, middle(name));
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
