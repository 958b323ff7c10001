#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <ostream>

namespace {

/// A control, and the signal by which it reports a press.
struct Pressed
{
    const char *name;
    const char *qml;
    const char *signal = SIGNAL(clicked());
};

std::ostream &operator<<(std::ostream &out, const Pressed &control)
{
    return out << control.name;
}

class HeldKey : public testing::TestWithParam<Pressed>
{
protected:
    static void SetUpTestSuite()
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
        static int count = 1;
        static std::array<char, 5> name = {'t', 'e', 's', 't', '\0'};
        static std::array<char *, 2> arguments = {name.data(), nullptr};
        application = std::make_unique<QGuiApplication>(count, arguments.data());
    }

    static void TearDownTestSuite() { application.reset(); }

    HeldKey()
    {
        view.engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(view.engine());
        component.setData(QByteArray("import QtQuick\nimport Vellomar.Design\n") + GetParam().qml,
                          QUrl(QStringLiteral("qrc:/Held.qml")));
        control = qobject_cast<QQuickItem *>(component.create());
        EXPECT_NE(control, nullptr) << component.errorString().toStdString();
        view.setContent({}, &component, control);
        view.show();
        view.requestActivate();
        control->forceActiveFocus(Qt::TabFocusReason);
    }

    void send(QEvent::Type type, int key, bool repeated)
    {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), repeated);
        QCoreApplication::sendEvent(&view, &event);
    }

    static std::unique_ptr<QGuiApplication> application;
    QQuickView view;
    QQuickItem *control = nullptr;
};

std::unique_ptr<QGuiApplication> HeldKey::application;

TEST_P(HeldKey, pressesOnce)
{
    QSignalSpy presses(control, GetParam().signal);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        presses.clear();
        send(QEvent::KeyPress, key, true); // held since before the control had the keyboard
        EXPECT_EQ(presses.size(), 0);
        send(QEvent::KeyPress, key, false);
        for (int i = 0; i < 5; ++i) {
            send(QEvent::KeyPress, key, true);
        }
        send(QEvent::KeyRelease, key, false);
        EXPECT_EQ(presses.size(), 1);
    }
}

class HeldEye : public HeldKey
{
};

TEST_P(HeldEye, revealsUntilSpaceIsLetGo)
{
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    EXPECT_FALSE(control->property("held").toBool());
    send(QEvent::KeyPress, Qt::Key_Space, false);
    EXPECT_TRUE(control->property("held").toBool());
    for (int i = 0; i < 3; ++i) {
        // What a held key sends again and again.
        send(QEvent::KeyRelease, Qt::Key_Space, true);
        EXPECT_TRUE(control->property("held").toBool());
        send(QEvent::KeyPress, Qt::Key_Space, true);
        EXPECT_TRUE(control->property("held").toBool());
    }
    send(QEvent::KeyRelease, Qt::Key_Space, false);
    EXPECT_FALSE(control->property("held").toBool());
}

INSTANTIATE_TEST_SUITE_P(ofTheEye, HeldEye,
                         testing::Values(Pressed{"eye", R"(RevealButton { text: "Mostra" })"}),
                         testing::PrintToStringParamName());

INSTANTIATE_TEST_SUITE_P(
    ofEachControl, HeldKey,
    testing::Values(Pressed{"pill", R"(PillButton { text: "Ok" })"},
                    Pressed{"icon", R"(IconButton { symbol: "xmark"; help: "Chiudi" })"},
                    Pressed{"box", R"(CheckBox { text: "Ok" })", SIGNAL(asked(bool))},
                    Pressed{"switch", R"(Switch { text: "Ok" })", SIGNAL(asked(bool))},
                    Pressed{"words", R"(TextButton { text: "Ok" })"},
                    Pressed{"disclosure", R"(DisclosureRow { text: "Ok"; expanded: false })"},
                    Pressed{"chip", R"(Chip { text: "Ok"; help: "Rimuovi" })", SIGNAL(removed())},
                    // The first key opens the list, the second one chooses from it.
                    Pressed{"combo", R"(Combo {
                        id: combo

                        signal heard

                        name: "Ok"
                        options: [{value: 0, label: "Ok"}]
                        selection: 1
                        onChosen: heard()
                        Connections {
                            target: combo.list
                            function onAboutToShow() { combo.heard(); }
                        }
                    })",
                            SIGNAL(heard())},
                    Pressed{"menuItem", R"(MenuItem { text: "Ok" })"},
                    Pressed{"segment", R"(SegmentedOption { text: "Ok"; selected: false })"}),
    testing::PrintToStringParamName());

} // namespace
