#include "home/HomeScreen.h"

#include "model/Derived.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>

namespace velmor {

QString buildStamp(const QString &path)
{
    const QDateTime built = QFileInfo(path).lastModified();
    if (path.isEmpty() || !built.isValid())
        return QStringLiteral("dev");
    // A thin space keeps the letter and the date apart.
    return QStringLiteral("b\u2009") + built.toString(QStringLiteral("d.M. HH:mm"));
}

QString HomeScreen::stamp()
{
    static const QString stamp = buildStamp(QCoreApplication::applicationFilePath());
    return stamp;
}

void HomeScreen::setModel(AppModel *model)
{
    if (m_model == model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (model) {
        connect(model, &AppModel::toastChanged, this, &HomeScreen::refresh);
        connect(model, &AppModel::showAdvancedChanged, this, &HomeScreen::refresh);
        connect(model, &AppModel::showScansChanged, this, &HomeScreen::refresh);
        refresh();
    }
    Q_EMIT modelChanged();
}

void HomeScreen::refresh()
{
    const std::optional<QString> toast = m_model->toast();
    if (toast)
        derive(this, m_toast, *toast, &HomeScreen::toastChanged);
    derive(this, m_showToast, toast.has_value(), &HomeScreen::showToastChanged);
    derive(this, m_showAdvanced, m_model->showAdvanced(), &HomeScreen::showAdvancedChanged);
    derive(this, m_showScans, m_model->showScans(), &HomeScreen::showScansChanged);
}

} // namespace velmor
