#include "browser/ScansBrowser.h"

#include <QGuiApplication>

#include <algorithm>

namespace velmor {

ScansBrowser::ScansBrowser(QObject *parent) : QObject(parent)
{
    connect(&m_watch, &FolderWatch::changed, this, [this] {
        if (m_model)
            m_model->loadResults();
    });
}

void ScansBrowser::setModel(AppModel *model)
{
    if (model == m_model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    m_stamps.clear();
    if (m_model) {
        connect(m_model, &AppModel::resultsChanged, this, &ScansBrowser::noticeChanges);
        connect(m_model, &AppModel::settingsChanged, this, &ScansBrowser::followFolder);
        connect(m_model, &AppModel::undoableFilesChanged, this, &ScansBrowser::previewChanged);
        connect(m_model, &AppModel::magicPresetChanged, this, &ScansBrowser::magicPresetChanged);
        followFolder();
        m_model->loadResults();
    }
    Q_EMIT modelChanged();
    Q_EMIT magicPresetChanged();
}

void ScansBrowser::followFolder()
{
    m_watch.setFolder(m_model->settings().outputFolder.toLocalFile());
}

void ScansBrowser::noticeChanges()
{
    // What vanished keeps its stamp: another file may come under its name.
    QList<QUrl> changed;
    for (const ScanResult &result : m_model->results()) {
        const FileStamp stamp = stampOf(result.url);
        const auto former = m_stamps.constFind(result.url);
        if (former != m_stamps.cend() && *former != stamp)
            changed.append(result.url);
        m_stamps.insert(result.url, stamp);
    }
    Q_EMIT resultsChanged();
    raise(changed);
}

QUrl ScansBrowser::urlAt(int place) const
{
    const bool isThere = m_model && place >= 0 && place < m_model->results().size();
    return isThere ? m_model->results().at(place).url : QUrl();
}

int ScansBrowser::placeOf(const QUrl &url) const
{
    if (!m_model)
        return -1;
    const QList<ScanResult> &results = m_model->results();
    const auto found = std::ranges::find(results, url, &ScanResult::url);
    return found != results.cend() ? static_cast<int>(found - results.cbegin()) : -1;
}

void ScansBrowser::setThumbSize(qreal size)
{
    size = std::clamp(size, smallestThumb, largestThumb);
    if (size == m_thumbSize)
        return;
    m_thumbSize = size;
    Q_EMIT thumbSizeChanged();
}

std::optional<QUrl> ScansBrowser::previewURL() const
{
    if (m_hovered)
        return m_hovered;
    if (!m_selection.isEmpty())
        return m_selection.first();
    if (m_model && !m_model->results().isEmpty())
        return m_model->results().first().url;
    return std::nullopt;
}

QList<QUrl> ScansBrowser::targets() const
{
    if (!m_selection.isEmpty())
        return m_selection;
    const std::optional<QUrl> shown = previewURL();
    return shown ? QList<QUrl>(1, *shown) : QList<QUrl>();
}

bool ScansBrowser::canUndo() const
{
    const std::optional<QUrl> shown = previewURL();
    return shown && m_model && m_model->undoableFiles().contains(*shown);
}

int ScansBrowser::count() const
{
    return m_model ? static_cast<int>(m_model->results().size()) : 0;
}

void ScansBrowser::toggle(const QUrl &url)
{
    toggle(url, QGuiApplication::queryKeyboardModifiers());
}

void ScansBrowser::toggle(const QUrl &url, Qt::KeyboardModifiers modifiers)
{
    if (m_editorMode)
        return;
    if (!(modifiers & (Qt::ControlModifier | Qt::ShiftModifier))) {
        setSelection({url});
        return;
    }
    QList<QUrl> selection = m_selection;
    if (selection.removeAll(url) == 0)
        selection.append(url);
    setSelection(selection);
}

void ScansBrowser::enter(const QUrl &url)
{
    if (!m_editorMode)
        setHovered(url);
}

void ScansBrowser::leave(const QUrl &url)
{
    // The next scan may have been entered before this one is left.
    if (!m_editorMode && m_hovered == url)
        setHovered(std::nullopt);
}

QList<QUrl> ScansBrowser::filesAt(const QUrl &url) const
{
    return m_selection.contains(url) ? m_selection : QList<QUrl>{url};
}

bool ScansBrowser::aimAt(const QUrl &url)
{
    if (m_editorMode || url.isEmpty())
        return false;
    setSelection(filesAt(url));
    return true;
}

QString ScansBrowser::nameOf(const QUrl &url) const
{
    return fileStem(url);
}

void ScansBrowser::startEditor(EditorMode mode)
{
    const std::optional<QUrl> file = previewURL();
    if (!file) {
        setNote(tr("No scan to edit"));
        return;
    }
    m_editorViewport = m_pdfViewBox.currentViewport(*file);
    setHovered(std::nullopt);
    setSelection({*file});
    setEditor(file, mode);
}

EditRequest ScansBrowser::editRequest() const
{
    if (!isEditing())
        return {};
    return {*m_editorURL, *m_editorMode, m_editorViewport};
}

QString ScansBrowser::editorIdentity() const
{
    if (!isEditing())
        return {};
    const bool isCrop = m_editorMode == EditorMode::crop;
    return m_editorURL->path() + (isCrop ? QStringLiteral("#crop") : QStringLiteral("#magic"));
}

void ScansBrowser::finishEditing(bool changed)
{
    const std::optional<QUrl> file = m_editorURL;
    setEditor(std::nullopt, std::nullopt);
    if (!changed || !file)
        return;
    raise({*file});
    if (m_model)
        m_model->loadResults();
}

void ScansBrowser::handleKey(const QString &name)
{
    if (m_editorMode)
        return;
    static const QHash<QString, void (ScansBrowser::*)()> operations = {
        {QStringLiteral("r"),      &ScansBrowser::rotate        },
        {QStringLiteral("m"),      &ScansBrowser::merge         },
        {QStringLiteral("s"),      &ScansBrowser::split         },
        {QStringLiteral("c"),      &ScansBrowser::startCrop     },
        {QStringLiteral("w"),      &ScansBrowser::startMagic    },
        {QStringLiteral("undo"),   &ScansBrowser::undoEdit      },
        {QStringLiteral("delete"), &ScansBrowser::deleteSelected},
    };
    if (const auto operation = operations.value(name))
        (this->*operation)();
}

void ScansBrowser::setSelection(const QList<QUrl> &selection)
{
    if (selection == m_selection)
        return;
    m_selection = selection;
    Q_EMIT selectionChanged();
    Q_EMIT previewChanged();
}

void ScansBrowser::setHovered(const std::optional<QUrl> &hovered)
{
    if (hovered == m_hovered)
        return;
    m_hovered = hovered;
    Q_EMIT hoveredChanged();
    Q_EMIT previewChanged();
}

void ScansBrowser::setNote(const QString &note)
{
    m_note = note;
    Q_EMIT noteChanged();
}

void ScansBrowser::setEditor(const std::optional<QUrl> &url, const std::optional<EditorMode> &mode)
{
    m_editorURL = url;
    m_editorMode = mode;
    Q_EMIT editorChanged();
}

/// Marks the new `files` alone and shows them at once, wherever the pointer is.
void ScansBrowser::showOnly(const QList<QUrl> &files)
{
    setSelection(files);
    setHovered(std::nullopt);
}

/// The content of `files` changed.
void ScansBrowser::raise(const QList<QUrl> &files)
{
    for (const QUrl &file : files) {
        ++m_rev[file];
        m_stamps.insert(file, stampOf(file));
        Q_EMIT revChanged(file);
    }
    Q_EMIT previewChanged();
}

void ScansBrowser::bump(const QString &message)
{
    setNote(message);
    if (m_model)
        m_model->loadResults();
}

} // namespace velmor
