#pragma once

#include "model/AppModel.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// When the program at `path` was built, in a few characters; "dev" if that can't be told.
[[nodiscard]] QString buildStamp(const QString &path);

/// The state of the main window around the card: the toast, the two drawers and the build stamp.
class HomeScreen : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::AppModel *model READ model WRITE setModel NOTIFY modelChanged REQUIRED)
    Q_PROPERTY(QString toast READ toast NOTIFY toastChanged)
    Q_PROPERTY(bool showToast READ showToast NOTIFY showToastChanged)
    Q_PROPERTY(bool showAdvanced READ showAdvanced NOTIFY showAdvancedChanged)
    Q_PROPERTY(bool showScans READ showScans NOTIFY showScansChanged)
    Q_PROPERTY(QString stamp READ stamp CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] AppModel *model() const { return m_model; }
    /// The model must outlive this, or go with the program.
    void setModel(AppModel *model);

    /// The message on screen. Keeps the last one after it, for the toast to leave with.
    [[nodiscard]] const QString &toast() const { return m_toast; }
    [[nodiscard]] bool showToast() const { return m_showToast; }
    [[nodiscard]] bool showAdvanced() const { return m_showAdvanced; }
    [[nodiscard]] bool showScans() const { return m_showScans; }
    /// `buildStamp` of the running program.
    [[nodiscard]] static QString stamp();

Q_SIGNALS:
    void modelChanged();
    void toastChanged();
    void showToastChanged();
    void showAdvancedChanged();
    void showScansChanged();

private:
    void refresh();

    QPointer<AppModel> m_model;
    QString m_toast;
    bool m_showToast = false;
    bool m_showAdvanced = false;
    bool m_showScans = false;
};

} // namespace velmor
