#pragma once

#include "controls/PictureItem.h"
#include "editor/PageEditor.h"

#include <QColor>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// The boxes of crop mode over the page: finished ones, the one being clicked, and a proposed one.
///
/// It fills the image area and takes no pointer input.
class CropOverlay : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::PageEditor *editor READ editor WRITE setEditor NOTIFY editorChanged REQUIRED)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    /// Whether the corner that the arrow keys move has a ring around it.
    Q_PROPERTY(bool showsFocus MEMBER m_showsFocus NOTIFY changed)

public:
    explicit CropOverlay(QQuickItem *parent = nullptr);

    [[nodiscard]] PageEditor *editor() const { return m_editor; }
    void setEditor(PageEditor *editor);

Q_SIGNALS:
    void editorChanged();
    void changed();

protected:
    void paint(QPainter &painter, QSizeF size) const override;

private:
    void paintProposal(QPainter &painter, const QRectF &rect) const;
    void paintBox(QPainter &painter, const QRectF &rect, int box) const;
    void paintPending(QPainter &painter, const QRectF &rect) const;
    [[nodiscard]] QColor faded(double opacity) const;

    QPointer<PageEditor> m_editor;
    QColor m_color = Qt::black;
    bool m_showsFocus = false;
};

} // namespace velmor
