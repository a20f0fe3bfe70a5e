#include "browser/ScanRows.h"

namespace velmor {

void ScanRows::setCells(int cells)
{
    m_cells = qMax(cells, 0);
    update();
}

void ScanRows::setColumns(int columns)
{
    m_columns = qMax(columns, 1);
    update();
}

int ScanRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

void ScanRows::update()
{
    const int rows = (m_cells + m_columns - 1) / m_columns;
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
    Q_EMIT changed();
}

} // namespace velmor
