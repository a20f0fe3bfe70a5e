#pragma once

#include "controls/PictureItem.h"
#include "editor/PageEditor.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// The lens of an editor's loupe: single pixels of the page as sharp blocks, in a ring, with a red
/// square around the one that a click would measure.
///
/// Its size is that of the lens with its rings. The edges of the blocks and of the square are
/// rounded to the window's pixels alike, so that the square frames the block at every scale. They
/// are sharp where the item itself lies on the window's pixels.
class LoupeLens : public velmor::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::PageEditor *editor READ editor WRITE setEditor NOTIFY editorChanged REQUIRED)
    /// Whether the pointer is where the lens can show something.
    Q_PROPERTY(bool isShown READ isShown NOTIFY moved)
    /// Where the middle of lens and label belongs, in the image area.
    Q_PROPERTY(QPointF center READ center NOTIFY moved)
    /// Of the lens alone, in points.
    Q_PROPERTY(double diameter READ diameter CONSTANT)
    /// Room for the rings on each side of it.
    Q_PROPERTY(double rim READ rim CONSTANT)

public:
    explicit LoupeLens(QQuickItem *parent = nullptr);

    [[nodiscard]] PageEditor *editor() const { return m_editor; }
    void setEditor(PageEditor *editor);

    [[nodiscard]] bool isShown() const { return m_loupe.has_value(); }
    [[nodiscard]] QPointF center() const { return m_loupe ? m_loupe->center : QPointF(); }
    [[nodiscard]] static double diameter() { return Loupe::diameter; }
    [[nodiscard]] static double rim() { return 2; }

    /// A place in `item` moved to the nearest corner of one of the window's pixels.
    Q_INVOKABLE QPointF onPixels(const QQuickItem *item, QPointF place) const;

Q_SIGNALS:
    void editorChanged();
    void moved();

protected:
    void paint(QPainter &painter, QSizeF size) const override;

private:
    void follow();

    QPointer<PageEditor> m_editor;
    std::optional<Loupe> m_loupe;
};

} // namespace velmor
