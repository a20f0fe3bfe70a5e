#include "browser/ScansList.h"

#include <QDesktopServices>
#include <QLocale>

#include <algorithm>

namespace velmor {

void ScansList::setModel(AppModel *model)
{
    if (model == m_model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (m_model)
        connect(m_model, &AppModel::resultsChanged, this, &ScansList::refresh);
    refresh();
    Q_EMIT modelChanged();
}

/// A folder that was read again without a change keeps its rows, and with them the selection.
void ScansList::refresh()
{
    const QList<ScanResult> results = m_model ? m_model->results() : QList<ScanResult>();
    const auto sameFile = [](const ScanResult &a, const ScanResult &b) {
        return a.url == b.url && a.date == b.date;
    };
    if (std::equal(results.begin(), results.end(), m_results.begin(), m_results.end(), sameFile))
        return;
    beginResetModel();
    m_results = results;
    endResetModel();
}

int ScansList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_results.size());
}

QVariant ScansList::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ScanResult &result = m_results.at(index.row());
    switch (role) {
    case nameRole:
        return result.name();
    case dateRole:
        return QLocale().toString(result.date.toLocalTime(), QLocale::ShortFormat);
    default:
        return {};
    }
}

QHash<int, QByteArray> ScansList::roleNames() const
{
    return {
        {nameRole, "name"},
        {dateRole, "date"}
    };
}

void ScansList::open(int row) const
{
    if (row >= 0 && row < m_results.size())
        QDesktopServices::openUrl(m_results.at(row).url);
}

} // namespace velmor
