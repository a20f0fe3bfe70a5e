#include "editor/EditorKeys.h"

#include "tests/editor_ui/EditorWindow.h"

#include <QAccessible>
#include <QtGui/private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace velmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

TEST(EditorKey, EachKeyMeansItsNameAndOthersPass)
{
    const struct {
        const char *what;
        int key;
        Qt::KeyboardModifiers modifiers;
        const char *name; ///< Null if the key passes on.
    } cases[] = {
        {"Escape",       Qt::Key_Escape,    {},                                      "escape"},
        {"Return",       Qt::Key_Return,    {},                                      "return"},
        {"Shift+Return", Qt::Key_Return,    Qt::ShiftModifier,                       "return"},
        {"Alt+Return",   Qt::Key_Return,    Qt::AltModifier,                         nullptr },
        {"the keypad's", Qt::Key_Enter,     Qt::KeypadModifier,                      "return"},
        {"Backspace",    Qt::Key_Backspace, {},                                      "delete"},
        {"Delete",       Qt::Key_Delete,    {},                                      nullptr },
        {"Z",            Qt::Key_Z,         {},                                      nullptr },
        {"Ctrl+Z",       Qt::Key_Z,         Qt::ControlModifier,                     "undo"  },
        {"Ctrl+Alt+Z",   Qt::Key_Z,         Qt::ControlModifier | Qt::AltModifier,   "undo"  },
        {"Ctrl+Shift+Z", Qt::Key_Z,         Qt::ControlModifier | Qt::ShiftModifier, "undo"  },
        {"Ctrl+Y",       Qt::Key_Y,         Qt::ControlModifier,                     nullptr },
        {"Ctrl+Escape",  Qt::Key_Escape,    Qt::ControlModifier,                     nullptr },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(editorKey(QKeyEvent(QEvent::KeyPress, c.key, c.modifiers)),
                  c.name ? std::optional(QString::fromUtf8(c.name)) : std::nullopt);
    }
}

using EditorKeysTest = EditorWindow;

/// The sliders whose changes were announced.
QStringList toldValues;

TEST_F(EditorKeysTest, EscapeGoesBackStepByStepWhateverHasTheFocus)
{
    open(EditorMode::crop);
    clickBox();
    click(onPage(0.5, 0.5));
    item("cancel")->forceActiveFocus();
    press(Qt::Key_Escape);
    EXPECT_THAT(editor->pending(), IsEmpty());
    EXPECT_THAT(editor->boxes(), SizeIs(1));
    EXPECT_THAT(ends, IsEmpty());
    press(Qt::Key_Escape);
    EXPECT_THAT(ends, ElementsAre(false));
}

TEST_F(EditorKeysTest, ATextFieldKeepsItsKeysAndAnotherWindowToo)
{
    open(EditorMode::crop);
    click(onPage(0.5, 0.5));
    QQmlComponent field(&m_engine);
    field.setData("import Velmor.Controls\nTextBox {}", QUrl(QStringLiteral("qrc:/Field.qml")));
    const std::unique_ptr<QObject> made(field.create());
    auto *const text = qobject_cast<QQuickItem *>(made.get());
    ASSERT_TRUE(text);
    text->setParentItem(window->contentItem());
    text->forceActiveFocus();
    press(Qt::Key_Escape);
    EXPECT_THAT(editor->pending(), SizeIs(1));

    area->forceActiveFocus();
    QQuickWindow other;
    QTest::keyClick(&other, Qt::Key_Escape);
    EXPECT_THAT(editor->pending(), SizeIs(1));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(editor->pending(), IsEmpty());
}

TEST_F(EditorKeysTest, APageIsCroppedByTheKeyboardAlone)
{
    open(EditorMode::crop);
    press(Qt::Key_Return);
    EXPECT_FALSE(editor->busy());
    press(Qt::Key_Insert);
    ASSERT_THAT(editor->boxes(), SizeIs(1));
    const QPointF corner = editor->boxes()[0].corners[0];
    press(Qt::Key_Left);
    press(Qt::Key_Up, Qt::ShiftModifier);
    const QPointF moved = denorm(editor->boxes()[0].corners[0], editor->imageRect()) -
                          denorm(corner, editor->imageRect());
    EXPECT_NEAR(moved.x(), -1, 1e-6);
    EXPECT_NEAR(moved.y(), -10, 1e-6);
    for (int corners = 0; corners < 4; ++corners) {
        EXPECT_TRUE(area->hasActiveFocus());
        press(Qt::Key_Tab);
    }
    EXPECT_FALSE(area->hasActiveFocus());
    press(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_NEAR(editor->zoom(), PageEditor::zoomStep, 1e-9);
    press(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(editor->zoom(), 1);
    press(Qt::Key_Return);
    EXPECT_TRUE(waitUntil([this] { return !ends.isEmpty(); }));
    EXPECT_THAT(ends, ElementsAre(true));
}

TEST_F(EditorKeysTest, LevelsAreSetByTheKeyboardAlone)
{
    open(EditorMode::magic);
    item("blackKnob")->forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Right);
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_NEAR(editor->blackLum(), 0.06, 1e-9);
    press(Qt::Key_Tab);
    EXPECT_TRUE(item("whiteKnob")->hasActiveFocus());
    press(Qt::Key_Home);
    EXPECT_NEAR(editor->whiteLum(), 0.07, 1e-9);
    press(Qt::Key_Tab);
    EXPECT_TRUE(item("softness")->hasActiveFocus());
    press(Qt::Key_Right);
    EXPECT_NEAR(editor->softness(), 0.55, 1e-9);
    press(Qt::Key_Escape);
    EXPECT_FALSE(editor->magicTouched());
}

TEST_F(EditorKeysTest, EscapeLeavesWhatWorksOrWontCome)
{
    open(EditorMode::crop);
    press(Qt::Key_Insert);
    // At its very beginning: how long it takes is nobody's to say.
    QObject::connect(editor, &PageEditor::busyChanged, editor, [this] {
        if (editor->busy())
            press(Qt::Key_Escape);
    });
    press(Qt::Key_Return);
    EXPECT_THAT(ends, ElementsAre(false));

    const QString path = writeFile(scansPath() + QStringLiteral("/b.pdf"), "nothing");
    begin(QUrl::fromLocalFile(path), EditorMode::crop);
    ASSERT_TRUE(waitUntil([this] { return !editor->hint().isEmpty(); }));
    EXPECT_TRUE(item("pageSpinner")->isVisible());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(area)->text(QAccessible::Description),
              editor->hint());
    press(Qt::Key_Escape);
    EXPECT_THAT(ends, ElementsAre(false, false));
}

TEST_F(EditorKeysTest, AScreenReaderIsToldWhatIsThere)
{
    open(EditorMode::magic);
    editor->setBlackLum(0.25);
    const auto told = [this](const char *name) {
        return QAccessible::queryAccessibleInterface(item(name));
    };
    const struct {
        const char *item;
        QAccessible::Role role;
        const char *name, *description;
    } cases[] = {
        {"area",       QAccessible::Graphic, "Page 1",      ""                      },
        {"blackKnob",  QAccessible::Slider,  "Black point", "25%"                   },
        {"whiteKnob",  QAccessible::Slider,  "White point", "100%"                  },
        {"softness",   QAccessible::Slider,  "Softness",    "γ 1.00"                },
        {"applyMagic", QAccessible::Button,  "Apply",       "Apply to this page (⏎)"},
        {"zoomOut",    QAccessible::Button,  "Zoom out",    ""                      },
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.item);
        ASSERT_TRUE(told(c.item));
        EXPECT_EQ(told(c.item)->role(), c.role);
        EXPECT_EQ(told(c.item)->text(QAccessible::Name).toStdString(), c.name);
        EXPECT_EQ(told(c.item)->text(QAccessible::Description).toStdString(), c.description);
    }
    for (const auto &[name, level, reached] : {
             std::tuple("blackKnob", 40.0, 40.0),
             {"whiteKnob", 20.0, 41.0},
             {"blackKnob", 30.0, 30.0},
             {"softness",  0.25, 0.25}
    }) {
        SCOPED_TRACE(name);
        QAccessibleValueInterface *const value = told(name)->valueInterface();
        ASSERT_TRUE(value);
        value->setCurrentValue(level);
        EXPECT_NEAR(value->currentValue().toDouble(), reached, 1e-9);
    }
    EXPECT_NEAR(editor->blackLum(), 0.3, 1e-9);
    EXPECT_NEAR(editor->whiteLum(), 0.41, 1e-9);
    EXPECT_NEAR(editor->softness(), 0.25, 1e-9);
    const auto valueOf = [&](const char *name) {
        return told(name)->valueInterface()->currentValue().toDouble();
    };
    toldValues.clear();
    QPlatformAccessibility *const platform =
        QGuiApplicationPrivate::platformIntegration()->accessibility();
    platform->setActive(true);
    QAccessible::installUpdateHandler([](QAccessibleEvent *event) {
        if (event->type() == QAccessible::ValueChanged)
            toldValues.append(event->object()->objectName());
    });
    editor->resetMagic();
    QAccessible::installUpdateHandler(nullptr);
    platform->setActive(false);
    EXPECT_EQ(valueOf("blackKnob"), 0) << "still bound";
    EXPECT_EQ(valueOf("whiteKnob"), 100);
    EXPECT_EQ(valueOf("softness"), 0.5);
    EXPECT_THAT(toldValues, IsSupersetOf({u"blackKnob", u"whiteKnob", u"softness"}));
    open(EditorMode::crop);
    press(Qt::Key_Insert);
    EXPECT_EQ(told("area")->text(QAccessible::Name).toStdString(), "Box 1, top left corner");
    EXPECT_EQ(told("area")->text(QAccessible::Description).toStdString(),
              "25% from the left, 25% from the top");
}

} // namespace
} // namespace velmor
