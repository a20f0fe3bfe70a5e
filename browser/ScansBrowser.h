#pragma once

#include "browser/FolderWatch.h"
#include "model/AppModel.h"
#include "model/EditRequest.h"
#include "model/FileStamp.h"
#include "preview/PDFViewBox.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace velmor {

/// The state of the screen over the output folder, and every operation on the scans in it.
///
/// The list follows the folder, also where other programs change it: a file that was changed counts
/// as one more revision of it.
///
/// An operation acts on the marked scans, and with none marked on the one in the preview. It opens
/// the files, changes and writes them, says in `note` how that went, and has the model read the
/// folder again. Main thread; operations take as long as the files do, but for `applyMagicPreset`.
class ScansBrowser : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::AppModel *model READ model WRITE setModel NOTIFY modelChanged)
    Q_PROPERTY(int count READ count NOTIFY resultsChanged)
    Q_PROPERTY(int markedCount READ markedCount NOTIFY selectionChanged)
    Q_PROPERTY(QUrl previewURL READ previewUrlOrNone NOTIFY previewChanged)
    Q_PROPERTY(bool hasPreview READ hasPreview NOTIFY previewChanged)
    Q_PROPERTY(int previewRevision READ previewRevision NOTIFY previewChanged)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY previewChanged)
    Q_PROPERTY(bool hasMagicPreset READ hasMagicPreset NOTIFY magicPresetChanged)
    Q_PROPERTY(qreal thumbSize READ thumbSize WRITE setThumbSize NOTIFY thumbSizeChanged)
    Q_PROPERTY(QString note READ noteText NOTIFY noteChanged)
    Q_PROPERTY(velmor::PDFViewBox *pdfViewBox READ pdfViewBox CONSTANT)
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY editorChanged)
    Q_PROPERTY(QString editorIdentity READ editorIdentity NOTIFY editorChanged)
    Q_PROPERTY(velmor::EditRequest editRequest READ editRequest NOTIFY editorChanged)

public:
    /// The limits of `thumbSize`, in points.
    static constexpr qreal smallestThumb = 90;
    static constexpr qreal largestThumb = 260;

    explicit ScansBrowser(QObject *parent = nullptr);

    [[nodiscard]] AppModel *model() const { return m_model; }
    /// Takes a model, and has it read the folder.
    void setModel(AppModel *model);

    // --- State -------------------------------------------------------------------------------

    /// The marked scans, in the order of marking. Files that vanished stay.
    [[nodiscard]] const QList<QUrl> &selection() const { return m_selection; }
    /// The scan under the pointer.
    [[nodiscard]] const std::optional<QUrl> &hovered() const { return m_hovered; }
    /// How often a file's content changed under its name.
    [[nodiscard]] int rev(const QUrl &url) const { return m_rev.value(url); }
    /// The least width of a column of the grid, and the width of a scan in it.
    [[nodiscard]] qreal thumbSize() const { return m_thumbSize; }
    void setThumbSize(qreal size);
    /// How the last operation went; it stays until the next one.
    [[nodiscard]] const std::optional<QString> &note() const { return m_note; }
    /// The file in the page editor, with its mode; both absent while the scans are browsed.
    [[nodiscard]] const std::optional<QUrl> &editorURL() const { return m_editorURL; }
    [[nodiscard]] const std::optional<EditorMode> &editorMode() const { return m_editorMode; }
    /// Where the editor opens.
    [[nodiscard]] const EditorViewport &editorViewport() const { return m_editorViewport; }
    [[nodiscard]] bool isEditing() const { return m_editorURL && m_editorMode; }
    /// The three as one; with an empty URL while the scans are browsed.
    [[nodiscard]] EditRequest editRequest() const;
    /// Another one is another editor: the file's path, "#", and "crop" or "magic"; else empty.
    [[nodiscard]] QString editorIdentity() const;
    /// Knows what the preview shows.
    [[nodiscard]] PDFViewBox *pdfViewBox() { return &m_pdfViewBox; }

    /// The scan under the pointer, else the first marked one, else the newest.
    [[nodiscard]] std::optional<QUrl> previewURL() const;
    /// What an operation acts on.
    [[nodiscard]] QList<QUrl> targets() const;
    [[nodiscard]] bool canUndo() const;

    /// The scan at a place of the results; empty beyond them.
    Q_INVOKABLE [[nodiscard]] QUrl urlAt(int place) const;
    /// Where a scan is in the results; -1 if it isn't.
    Q_INVOKABLE [[nodiscard]] int placeOf(const QUrl &url) const;

    // --- The grid ----------------------------------------------------------------------------

    /// A click: marks this scan alone, or with Ctrl or Shift turns its mark over.
    Q_INVOKABLE void toggle(const QUrl &url);
    void toggle(const QUrl &url, Qt::KeyboardModifiers modifiers);
    /// The pointer came to a scan, or left it.
    Q_INVOKABLE void enter(const QUrl &url);
    Q_INVOKABLE void leave(const QUrl &url);

    /// What a menu or a drag at a scan is about: the marked ones if it is one of them, else it
    /// alone.
    [[nodiscard]] QList<QUrl> filesAt(const QUrl &url) const;
    /// A menu opens at a scan, which is marked alone unless it is marked already. False if there is
    /// nothing to open it for: while the editor is open, or where no scan is.
    Q_INVOKABLE bool aimAt(const QUrl &url);
    /// What a scan is called, without its extension.
    Q_INVOKABLE [[nodiscard]] QString nameOf(const QUrl &url) const;

    // --- Operations --------------------------------------------------------------------------

    Q_INVOKABLE void rotate();
    Q_INVOKABLE void merge();
    Q_INVOKABLE void split();
    Q_INVOKABLE void deleteSelected();
    Q_INVOKABLE void undoEdit();
    /// Gives the targets the levels that were applied last in the editor.
    Q_INVOKABLE void applyMagicPreset();
    Q_INVOKABLE void startCrop() { startEditor(EditorMode::crop); }
    Q_INVOKABLE void startMagic() { startEditor(EditorMode::magic); }
    void startEditor(EditorMode mode);
    /// Gives a scan another name. What speaks against it; empty once it has the name.
    Q_INVOKABLE QString rename(const QUrl &url, const QString &name);
    /// Shows scans that came from elsewhere, with a message. Not while the editor is open, which
    /// keeps its scan.
    void showNew(const QList<QUrl> &files, const QString &message);
    /// Shows a message.
    void tell(const QString &message) { setNote(message); }
    /// The editor is done; `changed` if it replaced the file.
    Q_INVOKABLE void finishEditing(bool changed);
    /// A command of `KeyCommands`. Not while the editor is open.
    Q_INVOKABLE void handleKey(const QString &name);

Q_SIGNALS:
    void modelChanged();
    void resultsChanged();
    void selectionChanged();
    void hoveredChanged();
    /// The preview's file, its content or what can be done with it may have changed.
    void previewChanged();
    void revChanged(const QUrl &url);
    void thumbSizeChanged();
    void noteChanged();
    void magicPresetChanged();
    void editorChanged();

private:
    [[nodiscard]] int count() const;
    [[nodiscard]] int markedCount() const { return static_cast<int>(m_selection.size()); }
    [[nodiscard]] bool hasPreview() const { return previewURL().has_value(); }
    [[nodiscard]] QUrl previewUrlOrNone() const { return previewURL().value_or(QUrl()); }
    [[nodiscard]] int previewRevision() const { return rev(previewUrlOrNone()); }
    [[nodiscard]] bool hasMagicPreset() const { return m_model && m_model->magicPreset(); }
    [[nodiscard]] QString noteText() const { return m_note.value_or(QString()); }

    void followFolder();
    void noticeChanges();
    void setSelection(const QList<QUrl> &selection);
    void setHovered(const std::optional<QUrl> &hovered);
    void setNote(const QString &note);
    void setEditor(const std::optional<QUrl> &url, const std::optional<EditorMode> &mode);
    void showOnly(const QList<QUrl> &files);
    void raise(const QList<QUrl> &files);
    void bump(const QString &message);
    QCoro::Task<> repeatMagic(MagicSettings levels, QList<QUrl> files);

    QPointer<AppModel> m_model;
    QList<QUrl> m_selection;
    std::optional<QUrl> m_hovered;
    qreal m_thumbSize = 150;
    std::optional<QString> m_note;
    QHash<QUrl, int> m_rev;
    QHash<QUrl, FileStamp> m_stamps; ///< Of the files as they were when their revision was counted.
    FolderWatch m_watch;
    std::optional<QUrl> m_editorURL;
    std::optional<EditorMode> m_editorMode;
    EditorViewport m_editorViewport;
    PDFViewBox m_pdfViewBox;
};

} // namespace velmor
