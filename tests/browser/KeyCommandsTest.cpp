#include "browser/KeyCommands.h"

#include "tests/Waiting.h"

#include <QQuickWindow>
#include <gmock/gmock.h>

namespace velmor {
namespace {

QKeyEvent press(int key, Qt::KeyboardModifiers modifiers = {}, const char *text = "")
{
    return {QEvent::KeyPress, key, modifiers, QString::fromUtf8(text)};
}

TEST(KeyCommands, EachKeyMeansItsCommandAndOthersPass)
{
    const struct {
        const char *what;
        QKeyEvent press;
        const char *command; ///< Null if the key passes on.
    } cases[] = {
        {"R", press(Qt::Key_R, {}, "r"), "r"},
        {"Shift+R", press(Qt::Key_R, Qt::ShiftModifier, "R"), "r"},
        {"M", press(Qt::Key_M, {}, "m"), "m"},
        {"S", press(Qt::Key_S, {}, "s"), "s"},
        {"C", press(Qt::Key_C, {}, "c"), "c"},
        {"W", press(Qt::Key_W, {}, "w"), "w"},
        {"A, no command", press(Qt::Key_A, {}, "a"), nullptr},
        {"Z alone", press(Qt::Key_Z, {}, "z"), nullptr},
        {"Ctrl+Z", press(Qt::Key_Z, Qt::ControlModifier, "\x1A"), "undo"},
        {"Ctrl+Shift+Z", press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier), "undo"},
        {"Ctrl+Alt+Z", press(Qt::Key_Z, Qt::ControlModifier | Qt::AltModifier), "undo"},
        {"Alt+Z", press(Qt::Key_Z, Qt::AltModifier), nullptr},
        {"Ctrl+R", press(Qt::Key_R, Qt::ControlModifier), nullptr},
        {"Alt+R", press(Qt::Key_R, Qt::AltModifier), nullptr},
        {"Meta+R", press(Qt::Key_R, Qt::MetaModifier), nullptr},
        {"R on the keypad's layer", press(Qt::Key_R, Qt::KeypadModifier, "r"), "r"},
        {"the delete key", press(Qt::Key_Backspace, {}, "\b"), "delete"},
        {"Shift and delete", press(Qt::Key_Backspace, Qt::ShiftModifier, "\b"), "delete"},
        {"Ctrl and delete", press(Qt::Key_Backspace, Qt::ControlModifier, "\x7F"), nullptr},
        {"the delete character", press(Qt::Key_unknown, {}, "\x7F"), "delete"},
        {"forward delete", press(Qt::Key_Delete, {}, "\x7F"), nullptr},
        {"Return", press(Qt::Key_Return, {}, "\r"), nullptr},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(keyCommand(c.press),
                  c.command ? std::optional(QString::fromUtf8(c.command)) : std::nullopt);
    }
}

/// An item with the focus that says of itself whether it is a text field.
class FocusItem : public QQuickItem {
public:
    FocusItem(QQuickItem *parent, bool takesText, bool readOnly)
        : QQuickItem(parent), m_takesText(takesText), m_readOnly(readOnly)
    {
        setFlag(ItemAcceptsInputMethod, takesText);
        forceActiveFocus();
    }

    int presses = 0;

protected:
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override
    {
        if (query == Qt::ImEnabled)
            return m_takesText;
        return query == Qt::ImReadOnly ? QVariant(m_readOnly) : QQuickItem::inputMethodQuery(query);
    }
    void keyPressEvent(QKeyEvent *) override { ++presses; }

private:
    bool m_takesText;
    bool m_readOnly;
};

class KeyCommandsTest : public testing::Test {
protected:
    KeyCommandsTest() : commands(window.contentItem())
    {
        QObject::connect(&commands, &KeyCommands::key,
                         [this](const QString &name) { heard.append(name); });
        activate(window);
    }

    static void activate(QQuickWindow &shown)
    {
        shown.show();
        shown.requestActivate();
        EXPECT_TRUE(waitUntil([&] { return shown.isActive(); }));
    }

    static void send(QWindow &receiver, bool isHeld = false)
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_R, {}, QStringLiteral("r"), isHeld);
        QCoreApplication::sendEvent(&receiver, &event);
    }

    QQuickWindow window;
    KeyCommands commands;
    QStringList heard;
};

TEST_F(KeyCommandsTest, ACommandIsHeardOnceAndGoesNowhereElse)
{
    FocusItem item(window.contentItem(), false, false);
    send(window);
    send(window, true);
    EXPECT_EQ(heard, QStringList(QStringLiteral("r")));
    EXPECT_EQ(item.presses, 0);
}

TEST_F(KeyCommandsTest, AnotherWindowsKeysAreItsOwn)
{
    QQuickWindow other;
    activate(other);
    FocusItem item(other.contentItem(), false, false);
    send(other);
    EXPECT_EQ(heard, QStringList());
    EXPECT_EQ(item.presses, 1);
}

TEST_F(KeyCommandsTest, NothingIsTakenWhileNotEnabled)
{
    FocusItem item(window.contentItem(), false, false);
    commands.setProperty("isEnabled", false);
    send(window);
    EXPECT_EQ(heard, QStringList());
    EXPECT_EQ(item.presses, 1);
}

TEST_F(KeyCommandsTest, TypingIntoATextPassesThrough)
{
    const struct {
        const char *what;
        bool takesText, readOnly;
        qsizetype commands;
    } cases[] = {
        {"no text",           false, false, 1},
        {"a text field",      true,  false, 0},
        {"text only to read", true,  true,  1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        heard.clear();
        FocusItem item(window.contentItem(), c.takesText, c.readOnly);
        send(window);
        EXPECT_EQ(heard.size(), c.commands);
    }
}

TEST_F(KeyCommandsTest, AViewThatIsGoneHearsNothing)
{
    {
        KeyCommands shortLived(window.contentItem());
        QObject::connect(&shortLived, &KeyCommands::key,
                         [this](const QString &) { heard.append(QStringLiteral("gone")); });
    }
    commands.setParentItem(nullptr);
    send(window);
    EXPECT_EQ(heard, QStringList());
}

} // namespace
} // namespace velmor
