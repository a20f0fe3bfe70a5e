#pragma once

#include "preview/PreviewDocument.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <map>

namespace velmor {

/// Finds a text in a document: all its places, and one of them as the current one. Main thread.
///
/// Page after page is searched in the background, from the one that is shown; the first place
/// found there becomes the current one.
class TextSearch : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Part of a PDFView")
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(int current READ current NOTIFY changed)
    Q_PROPERTY(bool searching READ isSearching NOTIFY changed)

public:
    using QObject::QObject;

    /// Searches the same text in another document.
    void setDocument(const std::shared_ptr<PreviewDocument> &document);

    /// Where a new search begins.
    void setShownPage(int page) { m_shownPage = page; }

    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString &text);

    /// Places found so far.
    [[nodiscard]] int count() const { return m_count; }

    /// The current place's number, from 1; 0 without one.
    [[nodiscard]] int current() const;

    /// Whether there are pages left to search.
    [[nodiscard]] bool isSearching() const { return m_pagesLeft > 0; }

    /// Makes the following place the current one, or the one before; the ends meet.
    Q_INVOKABLE void next();
    Q_INVOKABLE void previous();

    /// The places on a page. Found out when they are asked for first.
    struct Boxes {
        QList<QRectF> others, current;
    };
    [[nodiscard]] Boxes boxes(int page);

Q_SIGNALS:
    void changed();
    /// There is a new current place; it should be brought into view.
    void currentFound(int page, const QRectF &box);

private:
    struct PageMatches {
        QList<TextRange> ranges; ///< Never empty.
        QList<QList<QRectF>> boxes;
        bool asked = false;
    };
    struct Match {
        int page;
        int index;
    };

    void restart();
    void searchPage();
    void takePage(const PageText &page);
    void askForBoxes(int page, PageMatches &matches);
    void setCurrent(const Match &match);
    void tellCurrent();

    std::shared_ptr<PreviewDocument> m_document;
    QString m_text;
    int m_shownPage = 0;
    int m_page = 0; ///< Which is searched now.
    int m_pagesLeft = 0;
    std::map<int, PageMatches> m_matches; ///< By page.
    int m_count = 0;                      ///< Of all places in `m_matches`.
    std::optional<Match> m_current;
    bool m_toldCurrent = true;
    QObject *m_answers = nullptr; ///< What answers about this search come to.
};

} // namespace velmor
