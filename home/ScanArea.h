#pragma once

#include "model/AppModel.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// What the middle of the card shows: the round button in its states, and beside any of them how
/// far the PDF in the making has come. Follows the model; without one it is the idle button.
class ScanArea : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::AppModel *model READ model WRITE setModel NOTIFY modelChanged REQUIRED)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    Q_PROPERTY(bool ready READ ready NOTIFY readyChanged)
    Q_PROPERTY(bool searching READ searching NOTIFY searchingChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)
    Q_PROPERTY(QString hint READ hint NOTIFY hintChanged)
    Q_PROPERTY(QString successText READ successText NOTIFY successTextChanged)
    Q_PROPERTY(bool assembling READ assembling NOTIFY assemblingChanged)
    Q_PROPERTY(QString assemblyText READ assemblyText NOTIFY assemblyTextChanged)
    Q_PROPERTY(double assemblyFraction READ assemblyFraction NOTIFY assemblyFractionChanged)

public:
    /// In the order in which they are tried.
    enum class State { Scanning, Success, Button };
    Q_ENUM(State)

    using QObject::QObject;

    [[nodiscard]] AppModel *model() const { return m_model; }
    /// The model must outlive this, or go with the program.
    void setModel(AppModel *model);

    [[nodiscard]] State state() const { return m_state; }
    /// Whether a click on the button scans.
    [[nodiscard]] bool ready() const { return m_ready; }
    [[nodiscard]] bool searching() const { return m_searching; }
    [[nodiscard]] const QString &statusText() const { return m_statusText; }
    /// What stands in the place of the button's symbol until it is ready.
    [[nodiscard]] const QString &hint() const { return m_hint; }
    /// The page count of the success flash in words. Keeps the last one after it.
    [[nodiscard]] const QString &successText() const { return m_successText; }
    /// Whether a PDF is in the making.
    [[nodiscard]] bool assembling() const { return m_assembling; }
    /// Which page of it is being worked on. Keeps the last one afterwards, as does the fraction.
    [[nodiscard]] const QString &assemblyText() const { return m_assemblyText; }
    /// How much of it is done: 0 to 1.
    [[nodiscard]] double assemblyFraction() const { return m_assemblyFraction; }

public Q_SLOTS:
    /// Scans, or looks for scanners while there are none.
    void press();
    /// Ends the running job.
    void stop();

Q_SIGNALS:
    void modelChanged();
    void stateChanged();
    void readyChanged();
    void searchingChanged();
    void statusTextChanged();
    void hintChanged();
    void successTextChanged();
    void assemblingChanged();
    void assemblyTextChanged();
    void assemblyFractionChanged();

private:
    void refresh();
    void refreshAssembly();

    QPointer<AppModel> m_model;
    State m_state = State::Button;
    bool m_ready = false;
    bool m_searching = false;
    QString m_statusText;
    QString m_hint;
    QString m_successText;
    bool m_assembling = false;
    QString m_assemblyText;
    double m_assemblyFraction = 0;
};

} // namespace velmor
