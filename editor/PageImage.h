#pragma once

#include "editor/PageEditor.h"

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace velmor {

/// Shows the page of an editor where that says, with the levels of the moment.
///
/// Where the page is shown smaller than its image is, the image is reduced to the window's very
/// pixels by averaging, so that print stays legible; where it is larger, the renderer interpolates.
/// It looks the same on every renderer. The image area clips what reaches beyond it, but for its
/// lower right corner: where that is round, the page is.
class PageImage : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velmor::PageEditor *editor READ editor WRITE setEditor NOTIFY editorChanged REQUIRED)
    /// Of the item's lower right corner, in points; 0 for a square one.
    Q_PROPERTY(qreal cornerRadius MEMBER m_cornerRadius NOTIFY cornerRadiusChanged)

public:
    explicit PageImage(QQuickItem *parent = nullptr);

    [[nodiscard]] PageEditor *editor() const { return m_editor; }
    void setEditor(PageEditor *editor);

Q_SIGNALS:
    void editorChanged();
    void cornerRadiusChanged();

protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

private:
    /// The page as a scene graph.
    class PageNode;

    QPointer<PageEditor> m_editor;
    qreal m_cornerRadius = 0;
    QImage m_image; ///< The one to show; null for none.
};

} // namespace velmor
