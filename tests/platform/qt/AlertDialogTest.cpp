#include "platform/qt/AlertDialog.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <optional>

namespace vorlane::platform {
namespace {

class AlertDialogTest : public testing::Test {
protected:
    std::optional<std::size_t> answer;
    int answers = 0;
    QPointer<AlertDialog> dialog;

    void ask(std::vector<AlertButton> buttons)
    {
        dialog = new AlertDialog({.message = "Clear history?",
                                  .informativeText = "It <b>cannot</b> be undone.",
                                  .buttons = std::move(buttons)},
                                 nullptr, [this](std::size_t button) {
                                     answer = button;
                                     ++answers;
                                 });
        dialog->open();
    }

    void askToClear()
    {
        ask({{.title = "Clear", .role = vorlane::ButtonRole::destructive},
             {.title = "Cancel", .role = vorlane::ButtonRole::cancel}});
    }

    void press(const QString& title)
    {
        for (auto* const button : dialog->buttons()) {
            if (button->text() == title) return button->click();
        }
        ADD_FAILURE() << "no such button";
    }

    void TearDown() override
    {
        if (dialog) dialog->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

TEST_F(AlertDialogTest, ShowsItsTextsUnchanged)
{
    askToClear();

    EXPECT_EQ(dialog->text(), "Clear history?");
    EXPECT_EQ(dialog->informativeText(), "It <b>cannot</b> be undone.");
    EXPECT_EQ(dialog->textFormat(), Qt::PlainText);
}

TEST_F(AlertDialogTest, AnswersWithTheChosenButton)
{
    askToClear();

    press("Clear");

    EXPECT_EQ(answer, 0U);
    EXPECT_EQ(answers, 1);
}

TEST_F(AlertDialogTest, TreatsEscapeAsTheCancelButton)
{
    askToClear();

    QTest::keyClick(dialog, Qt::Key_Escape);

    EXPECT_EQ(answer, 1U);
}

TEST_F(AlertDialogTest, TreatsClosingAsTheCancelButton)
{
    askToClear();

    dialog->close();

    EXPECT_EQ(answer, 1U);
    EXPECT_EQ(answers, 1);
}

TEST_F(AlertDialogTest, NeverMakesADestructiveButtonTheDefault)
{
    askToClear();

    QTest::keyClick(dialog, Qt::Key_Return);

    EXPECT_EQ(answer, 1U);
}

TEST_F(AlertDialogTest, MakesTheFirstHarmlessButtonTheDefault)
{
    ask({{.title = "Open Settings"}, {.title = "Later", .role = vorlane::ButtonRole::cancel}});

    QTest::keyClick(dialog, Qt::Key_Return);

    EXPECT_EQ(answer, 0U);
}

TEST_F(AlertDialogTest, IsDeletedOnceItIsAnswered)
{
    askToClear();

    press("Cancel");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_TRUE(dialog.isNull());
}

}  // namespace
}  // namespace vorlane::platform
