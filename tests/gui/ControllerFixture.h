#pragma once

#include <gtest/gtest.h>

#include <QSettings>
#include <QTest>
#include <memory>

#include "LogView.h"
#include "TSCController.h"
#include "ui_Calculator.h"

inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}

// A controller started the way the application starts it, on a preferences store that each test
// fills as it needs before start().
class ControllerFixture : public testing::Test {
protected:
    void SetUp() override { settings().clear(); }

    static QSettings& settings() {
        static QSettings store(QStringLiteral("Glessik"), QStringLiteral("Vantrel"));
        store.sync();
        return store;
    }

    vantrel::TSCController& start() {
        settings().sync();
        controller = std::make_unique<vantrel::TSCController>();
        controller->initialize();
        controller->setPasteButtonHidden(true);
        controller->calcWindow()->show();
        // As on a desktop, the window has been drawn before anyone acts on it.
        EXPECT_TRUE(QTest::qWaitForWindowExposed(controller->calcWindow()));
        QCoreApplication::processEvents();
        return *controller;
    }

    Ui::Calculator& ui() { return controller->ui(); }

    void type(const QString& text) { QTest::keyClicks(ui().inputField, text); }
    void pressReturn() { QTest::keyClick(ui().inputField, Qt::Key_Return); }
    QString log() { return vantrel::LogView::withoutJoiners(ui().calcLog->toPlainText()); }

    std::unique_ptr<vantrel::TSCController> controller;
};
