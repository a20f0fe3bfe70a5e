#pragma once

#include "preview/PreviewDocument.h"

#include <QObject>

namespace velmor {

/// The text of a document that its reader has selected. Main thread; answers come later, told by
/// `changed`.
class TextSelection : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Nothing is selected then.
    void setDocument(const std::shared_ptr<PreviewDocument> &document);

    /// Starts at a place, with nothing selected yet.
    void start(const PagePlace &place);

    /// Selects from the start to a place.
    void extend(const PagePlace &place);

    /// Selects the word at a place.
    void selectWord(const PagePlace &place);

    void selectAll();
    void clear();

    [[nodiscard]] bool isEmpty() const { return !m_start || !m_end || *m_start == *m_end; }

    /// What is selected of a page. Found out when it's asked for first.
    [[nodiscard]] QList<QRectF> boxes(int page);

    /// Hands the selected text out by `copied`; nothing happens without any.
    void copy();

Q_SIGNALS:
    void changed();
    void copied(const QString &text);

private:
    struct PageBoxes {
        TextRange asked; ///< Length -1 for all that follows.
        QList<QRectF> boxes;
    };

    void forget();
    void extendNext();
    void select(const TextPosition &start, const TextPosition &end);
    void selectWordAt(const TextPosition &position, const QString &text);
    [[nodiscard]] std::optional<TextRange> rangeOn(int page) const;

    std::shared_ptr<PreviewDocument> m_document;
    std::optional<TextPosition> m_start, m_end; ///< In any order.
    std::optional<PagePlace> m_extent;          ///< Where to, not yet asked for.
    bool m_extending = false;
    QHash<int, PageBoxes> m_boxes;
    QObject *m_answers = nullptr; ///< What answers about this selection come to.
};

} // namespace velmor
