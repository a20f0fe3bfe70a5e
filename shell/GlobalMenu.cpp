#include "shell/GlobalMenu.h"

#include "shell/AppDelegate.h"

#include <QGuiApplication>
#include <qpa/qplatformmenu.h>
#include <qpa/qplatformtheme.h>

#include <private/qguiapplication_p.h>

namespace velmor {

std::unique_ptr<GlobalMenu> GlobalMenu::make(AppDelegate &application, QWindow &window)
{
    const QPlatformTheme *theme = QGuiApplicationPrivate::platformTheme();
    std::unique_ptr<QPlatformMenuBar> bar(theme ? theme->createPlatformMenuBar() : nullptr);
    if (!bar)
        return nullptr;
    std::unique_ptr<GlobalMenu> menu(new GlobalMenu(std::move(bar)));
    menu->add(tr("About VELMOR"), application, &AppDelegate::showAbout);
    menu->add(tr("Check for Updates…"), application, &AppDelegate::checkForUpdates);
    menu->add(tr("Quit"), application, &AppDelegate::quit);
    menu->m_bar->insertMenu(menu->m_menu.get(), nullptr);
    menu->m_bar->handleReparent(&window);
    return menu;
}

GlobalMenu::GlobalMenu(std::unique_ptr<QPlatformMenuBar> bar)
    : m_bar(std::move(bar)), m_menu(m_bar->createMenu())
{
    m_menu->setText(QStringLiteral("VELMOR"));
}

GlobalMenu::~GlobalMenu() = default;

void GlobalMenu::add(const QString &text, AppDelegate &application, void (AppDelegate::*command)())
{
    QPlatformMenuItem *item = m_menu->createMenuItem();
    item->setParent(m_menu.get());
    item->setText(text);
    connect(item, &QPlatformMenuItem::activated, &application, command);
    m_menu->insertMenuItem(item, nullptr);
}

} // namespace velmor
