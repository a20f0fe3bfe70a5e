#include "model/AppModel.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickView>

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    velmor::AppModel model;
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral(":/qt/qml"));
    view.setInitialProperties({
        {QStringLiteral("model"), QVariant::fromValue(&model)}
    });
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Velmor/Home/HomeView.qml")));
    for (const auto &e : view.errors())
        qWarning() << e;
    view.show();
    return app.exec();
}
