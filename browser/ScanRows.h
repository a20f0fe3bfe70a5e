#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// The rows of a grid of `cells` in `columns`, without data: a row knows its cells by its index.
/// Rows come and go at the end, so that a view keeps its place. Main thread.
class ScanRows : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int cells MEMBER m_cells WRITE setCells NOTIFY changed)
    Q_PROPERTY(int columns MEMBER m_columns WRITE setColumns NOTIFY changed)

public:
    using QAbstractListModel::QAbstractListModel;

    void setCells(int cells);
    void setColumns(int columns);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &, int) const override { return {}; }

Q_SIGNALS:
    void changed();

private:
    void update();

    int m_cells = 0;
    int m_columns = 1;
    int m_rows = 0;
};

} // namespace velmor
