#pragma once

#include <QObject>

#include <memory>

class QPlatformMenu;
class QPlatformMenuBar;
class QWindow;

namespace velmor {

class AppDelegate;

/// The application's menu in the desktop's global menu bar.
class GlobalMenu : public QObject {
    Q_OBJECT

public:
    /// The menu of `window`; null on a desktop without such a bar. Both arguments must outlive it.
    [[nodiscard]] static std::unique_ptr<GlobalMenu> make(AppDelegate &application,
                                                          QWindow &window);
    ~GlobalMenu() override;

private:
    explicit GlobalMenu(std::unique_ptr<QPlatformMenuBar> bar);

    void add(const QString &text, AppDelegate &application, void (AppDelegate::*command)());

    std::unique_ptr<QPlatformMenuBar> m_bar;
    std::unique_ptr<QPlatformMenu> m_menu;
};

} // namespace velmor
