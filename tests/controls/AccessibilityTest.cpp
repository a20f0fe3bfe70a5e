#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <gtest/gtest.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <memory>
#include <private/qguiapplication_p.h>

namespace {

/// When the screen reader starts. Controls tell what they are when they are made or then.
enum class Reader { first, later };

/// A window with the controls of `qml` in it.
class Shown {
public:
    Shown(const char *qml, Reader reader)
    {
        setReading(reader == Reader::first);
        m_engine.addImportPath(QStringLiteral(":/qt/qml"));
        QQmlComponent component(&m_engine);
        component.setData(QByteArrayLiteral("import QtQuick; import QtQuick.Window;"
                                            "import Velmor.Controls;"
                                            "Window { width: 300; height: 200; visible: true; ") +
                              qml + '}',
                          QUrl(QStringLiteral("qrc:/Shown.qml")));
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        EXPECT_TRUE(m_window) << component.errorString().toStdString();
        setReading(true);
    }
    ~Shown() { setReading(false); }
    Q_DISABLE_COPY_MOVE(Shown)

    /// What the reader is told of the first control.
    [[nodiscard]] QAccessibleInterface *first() const
    {
        QAccessibleInterface *window = QAccessible::queryAccessibleInterface(m_window.get());
        return window && window->childCount() > 0 ? window->child(0) : nullptr;
    }

private:
    static void setReading(bool reading)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(reading);
    }

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

enum class Check { none, off, mixed, on };

Check checkOf(const QAccessible::State &state)
{
    if (!state.checkable)
        return Check::none;
    if (state.checkStateMixed)
        return Check::mixed;
    return state.checked ? Check::on : Check::off;
}

TEST(Accessibility, TellsRoleNameAndState)
{
    struct Case {
        const char *qml;
        QAccessible::Role role;
        const char *name;
        Check check;
    };
    using Role = QAccessible::Role;
    const Case cases[] = {
        {"PillButton { text: 'Save' }",                                    Role::Button,       "Save",        Check::none},
        {"PlainButton { symbol: 'scans'; hint: 'My scans' }",              Role::Button,       "My scans",
         Check::none                                                                                                     },
        {"ScanButton { symbol: 'stop'; Accessible.name: 'Stop' }",         Role::Button,       "Stop",
         Check::none                                                                                                     },
        {"MasterToggle { text: 'All' }",                                   Role::CheckBox,     "All",         Check::off },
        {"MasterToggle { text: 'All'; toggleState: ToggleState.Partial }", Role::CheckBox,     "All",
         Check::mixed                                                                                                    },
        {"MasterToggle { text: 'All'; toggleState: ToggleState.On }",      Role::CheckBox,     "All",
         Check::on                                                                                                       },
        {"BinaryToggle { text: 'Batch'; isOn: true }",                     Role::CheckBox,     "Batch",       Check::on  },
        {"BinaryToggle { text: 'Batch' }",                                 Role::CheckBox,     "Batch",       Check::off },
        {"ToggleButton { hint: 'Settings'; isOn: true }",                  Role::Button,       "Settings",    Check::on  },
        {"ToggleButton { hint: 'Settings' }",                              Role::Button,       "Settings",    Check::off },
        {"CheckMark { text: 'Folder'; checked: true }",                    Role::CheckBox,     "Folder",      Check::on  },
        {"ChoiceButton { text: 'Invoices'; selected: true }",              Role::RadioButton,  "Invoices",
         Check::on                                                                                                       },
        {"TextBox { placeholderText: 'Preset name' }",                     Role::EditableText, "Preset name",
         Check::none                                                                                                     },
        {"ProgressRing { value: 0.4 }",                                    Role::ProgressBar,  "40 %",        Check::none},
    };
    for (const Reader reader : {Reader::first, Reader::later}) {
        for (const Case &c : cases) {
            SCOPED_TRACE(c.qml);
            const Shown shown(c.qml, reader);
            QAccessibleInterface *told = shown.first();
            ASSERT_TRUE(told);
            EXPECT_EQ(told->role(), c.role);
            EXPECT_EQ(told->text(QAccessible::Name).toStdString(), c.name);
            EXPECT_EQ(checkOf(told->state()), c.check);
        }
    }
}

TEST(Accessibility, SegmentsTellWhichIsSelectedAndCanBePicked)
{
    const Shown shown("SegmentedPill { selection: 2; onPicked: value => selection = value;"
                      "options: [{label: 'Grey', value: 1}, {label: 'Colour', value: 2}] }",
                      Reader::later);
    QAccessibleInterface *pill = shown.first();
    ASSERT_TRUE(pill);
    ASSERT_EQ(pill->childCount(), 2);
    EXPECT_EQ(pill->child(1)->role(), QAccessible::RadioButton);
    EXPECT_EQ(pill->child(1)->text(QAccessible::Name).toStdString(), "Colour");
    EXPECT_EQ(checkOf(pill->child(0)->state()), Check::off);
    EXPECT_EQ(checkOf(pill->child(1)->state()), Check::on);
    ASSERT_TRUE(pill->child(0)->actionInterface());
    pill->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(checkOf(pill->child(0)->state()), Check::on);
    EXPECT_EQ(checkOf(pill->child(1)->state()), Check::off);
}

TEST(Accessibility, PressActsLikeAClick)
{
    const Shown shown("BinaryToggle { text: 'Batch'; onSwitched: on => isOn = on }", Reader::later);
    QAccessibleInterface *toggle = shown.first();
    ASSERT_TRUE(toggle && toggle->actionInterface());
    toggle->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(checkOf(toggle->state()), Check::on);
}

} // namespace
