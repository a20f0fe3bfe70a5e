#pragma once

#include "model/AppModel.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// The saved scans as rows of a list, newest first, with the roles `name` and `date`, both texts in
/// the user's language. Follows the model's `results`. Main thread.
class ScansList : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::AppModel *model READ model WRITE setModel NOTIFY modelChanged)

public:
    enum Role { nameRole = Qt::UserRole, dateRole };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] AppModel *model() const { return m_model; }
    void setModel(AppModel *model);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Opens the file of a row with the desktop's program for it.
    Q_INVOKABLE void open(int row) const;

Q_SIGNALS:
    void modelChanged();

private:
    void refresh();

    QPointer<AppModel> m_model;
    QList<ScanResult> m_results;
};

} // namespace velmor
