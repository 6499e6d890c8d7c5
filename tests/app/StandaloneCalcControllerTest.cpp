#include <gtest/gtest.h>

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "SingleInstance.h"
#include "StandaloneCalcController.h"
#include "TestRows.h"
#include "ui_Calculator.h"

namespace {

using vantrel::StandaloneCalcController;
using vantrel::TSCController;

class Delegate : public testing::Test {
protected:
    void SetUp() override {
        QSettings(QStringLiteral("Glessik"), QStringLiteral("Vantrel")).clear();
        delegate = std::make_unique<StandaloneCalcController>();
        delegate->setUrlOpener([this](const QUrl& url) {
            openedUrls << url;
            return true;
        });
        delegate->awakeFromNib();
        delegate->initialize();
    }

    TSCController& calc() { return *delegate->calcController(); }

    // The menu-bar item with this title, as the user would pick it.
    QAction* menuItem(const QString& title) {
        const auto items = calc().calcWindow()->menuBar()->findChildren<QAction*>();
        for (QAction* item : items) {
            if (item->text().remove(QLatin1Char('&')) == title) return item;
        }
        ADD_FAILURE() << "no menu item " << title.toStdString();
        return nullptr;
    }

    std::unique_ptr<StandaloneCalcController> delegate;
    QList<QUrl> openedUrls;
};

struct CommandRow {
    const char* name;
    const char* title;
    int displayState;
    int frameRate;
    bool ptMode;
};

class MenuCommands : public Delegate, public testing::WithParamInterface<CommandRow> {};

TEST_P(MenuCommands, ReachTheCalculator) {
    menuItem(QString::fromUtf8(GetParam().title))->trigger();
    EXPECT_EQ(calc().displayButtonState(), GetParam().displayState);
    EXPECT_EQ(calc().calculator().fps(), GetParam().frameRate);
    EXPECT_EQ(calc().displayCalcModeTime(), GetParam().ptMode);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Forwarding, MenuCommands, testing::Values(
    CommandRow{"number", "Frame Number", 1, 0, true},
    CommandRow{"film_length", "Film Length", -1, 0, true},
    CommandRow{"real_time", "Real Time", 4, 0, true},
    CommandRow{"rate_23d", "23.976 drop frame (23d)", 0, 3, true},
    CommandRow{"rate_59d", "59.94 drop frame (59d)", 0, 10, true},
    CommandRow{"rate_95n", "95.904 (95n)", 0, 15, true},
    CommandRow{"rate_119d", "119.88 drop frame (119d)", 0, 18, true},
    CommandRow{"mode_pf", "PF: Suffixes as Frames", 0, 0, false}),
    rowName<CommandRow>);
// clang-format on

TEST_F(Delegate, StartsTheCalculatorWithItsMenusAndVersion) {
    EXPECT_TRUE(calc().calcWindow()->isVisible());
    const QRegularExpression line(QStringLiteral("^Version \\d+\\.\\d+\\.\\d+ \\(\\d+\\)$"));
    EXPECT_TRUE(line.match(delegate->versionText()->text()).hasMatch());
    // Every command has a shortcut of its own, but for the links in the Help menu and the
    // choices inside a submenu.
    QSet<QKeySequence> shortcuts;
    for (QAction* item : calc().calcWindow()->menuBar()->findChildren<QAction*>()) {
        if (item->isSeparator() || item->menu() || item->text().isEmpty()) continue;
        // A choice of one of many is a radio item.
        if (item->isCheckable() && item->property("tag").isValid()) {
            EXPECT_TRUE(item->actionGroup() && item->actionGroup()->isExclusive())
                << item->text().toStdString();
        }
        const bool link = item->text().contains("Website") || item->text().contains("About");
        const auto* menu = qobject_cast<QMenu*>(item->parent());
        const bool submenuChoice =
            menu && qobject_cast<QMenu*>(menu->menuAction()->associatedObjects().value(0));
        if (link || submenuChoice) continue;
        EXPECT_FALSE(item->shortcut().isEmpty()) << item->text().toStdString();
        EXPECT_FALSE(shortcuts.contains(item->shortcut())) << item->text().toStdString();
        shortcuts.insert(item->shortcut());
    }
}

TEST_F(Delegate, LogCommandsActEvenWithTheWindowClosed) {
    QTest::keyClicks(calc().ui().inputField, QStringLiteral("1+2"));
    QTest::keyClick(calc().ui().inputField, Qt::Key_Return);
    calc().calcWindow()->close();
    menuItem(QStringLiteral("Clear Log"))->trigger();
    EXPECT_EQ(calc().ui().calcLog->toPlainText(), QString());
    // However the desktop activates Vantrel, the calculator comes to the front.
    QMetaObject::invokeMethod(qApp, "applicationStateChanged", Qt::DirectConnection,
                              Q_ARG(Qt::ApplicationState, Qt::ApplicationActive));
    EXPECT_TRUE(calc().calcWindow()->isVisible());
    EXPECT_EQ(calc().ui().inputField->text(), QStringLiteral("1+2"));
}

TEST_F(Delegate, AboutBoxAndPagesOpen) {
    menuItem(QStringLiteral("About Vantrel"))->trigger();
    EXPECT_TRUE(delegate->aboutBox()->isVisible());
    menuItem(QStringLiteral("Glessik Website"))->trigger();
    menuItem(QStringLiteral("Vantrel Help"))->trigger();
    menuItem(QStringLiteral("Expression Help"))->trigger();
    ASSERT_EQ(openedUrls.size(), 3);
    EXPECT_EQ(openedUrls[0], QUrl(QString::fromLatin1(StandaloneCalcController::kHomepage)));
    EXPECT_TRUE(openedUrls[1].toLocalFile().endsWith(
        QStringLiteral("Glessik Vantrel Help/Vantrel Help.html")));
    EXPECT_EQ(openedUrls[2].fragment(), QStringLiteral("expressions"));
    EXPECT_TRUE(QFile::exists(openedUrls[2].toLocalFile()));
}

// The socket lives in the user's runtime folder, named by user id. A later copy hands over only
// to a running copy of its own user; to it, a copy under another account is a stranger.
TEST(SingleInstance, HandsOverOnlyToACopyOfTheSameUser) {
    QTemporaryDir runtime;
    const QByteArray savedRuntime = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());
    const QString path = vantrel::SingleInstance::socketPathForThisUser();
    qputenv("XDG_RUNTIME_DIR", savedRuntime);
    EXPECT_EQ(path, runtime.filePath(QStringLiteral("com.glessik.Vantrel-%1").arg(getuid())));
    vantrel::SingleInstance running(path);
    ASSERT_TRUE(running.listen());
    QSignalSpy activations(&running, &vantrel::SingleInstance::activationRequested);
    EXPECT_FALSE(vantrel::SingleInstance(path, getuid() + 1).activateRunningInstance());
    EXPECT_TRUE(vantrel::SingleInstance(path, getuid()).activateRunningInstance());
    QTest::qWait(50);
    EXPECT_EQ(activations.count(), 1);
}

}  // namespace
