#pragma once

#include "controls/Motion.h"
#include "tests/ViewFixture.h"
#include "tests/model/AppModelFixture.h"

namespace velmor {

/// The home screen in a window, on a model of its own. Nothing springs or slides: every state is
/// there at once. Fades still take their time.
class CardFixture : public ViewFixture<AppModelFixture> {
protected:
    void SetUp() override
    {
        ASSERT_NO_FATAL_FAILURE(
            load(QStringLiteral("qrc:/qt/qml/Velmor/Home/HomeView.qml"),
                 {
                     {QStringLiteral("model"), QVariant::fromValue(model.get())}
        }));
        Motion::of(*view.engine())->setReduced(true);
        view.setColor(Qt::transparent);
        ASSERT_NO_FATAL_FAILURE(show());
        settle();
    }

    void hover(const char *name)
    {
        QTest::mouseMove(&view, middle(name));
        settle();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&view, key, modifiers);
        settle();
    }
};

} // namespace velmor
