#include "MessageBoxAlertPresenter.h"

#include "Later.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include <functional>
#include <string>

#include <gtest/gtest.h>

namespace {

class MessageBoxAlertPresenterTest : public testing::Test {
protected:
    /// Shows an alert, lets the user act on its message box, and returns the answer.
    bool show(
        AlertPresenter::Level level, const std::string& title, const std::string& text,
        const std::function<void(QMessageBox&)>& act)
    {
        later([&] { act(dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget())); });
        return m_presenter.showAlert(level, title, text);
    }

    QWidget m_window;
    MessageBoxAlertPresenter m_presenter{m_window};
};

void answer(QMessageBox& box)
{
    box.button(QMessageBox::Ok)->click();
}

} // namespace

TEST_F(MessageBoxAlertPresenterTest, ShowsTitleAndTextToTheLetter)
{
    QString title;
    QString text;
    Qt::TextFormat format = Qt::AutoText;

    show(
        AlertPresenter::Level::note, "R&D <b>", "<b>50%</b> &amp; \xC3\xA9\nline",
        [&](QMessageBox& box) {
            title = box.windowTitle();
            text = box.text();
            format = box.textFormat();
            answer(box);
        });

    EXPECT_EQ(title.toStdString(), "R&D <b>");
    EXPECT_EQ(text.toStdString(), "<b>50%</b> &amp; \xC3\xA9\nline");
    EXPECT_EQ(format, Qt::PlainText);
}

TEST_F(MessageBoxAlertPresenterTest, ShowsTheToolkitsPlaceholderInATitleToTheLetter)
{
    for (const char* const title : {"[*]", "a [*] b", "[*][*]", "[*][*][*] c", "[**]"}) {
        QString shown;

        show(AlertPresenter::Level::note, title, "Text", [&](QMessageBox& box) {
            shown = box.windowHandle()->title();
            answer(box);
        });

        EXPECT_EQ(shown.toStdString(), title);
    }
}

TEST_F(MessageBoxAlertPresenterTest, OffersOneOkButton)
{
    QMessageBox::StandardButtons buttons = QMessageBox::NoButton;

    show(AlertPresenter::Level::note, "Title", "Text", [&](QMessageBox& box) {
        buttons = box.standardButtons();
        answer(box);
    });

    EXPECT_EQ(buttons, QMessageBox::Ok);
}

TEST_F(MessageBoxAlertPresenterTest, LevelDecidesTheIcon)
{
    QMessageBox::Icon note = QMessageBox::NoIcon;
    QMessageBox::Icon stop = QMessageBox::NoIcon;

    show(AlertPresenter::Level::note, "Title", "Text", [&](QMessageBox& box) {
        note = box.icon();
        answer(box);
    });
    show(AlertPresenter::Level::stop, "Title", "Text", [&](QMessageBox& box) {
        stop = box.icon();
        answer(box);
    });

    EXPECT_EQ(note, QMessageBox::Information);
    EXPECT_EQ(stop, QMessageBox::Critical);
}

TEST_F(MessageBoxAlertPresenterTest, ButtonAnswersTheAlert)
{
    EXPECT_TRUE(show(AlertPresenter::Level::note, "Title", "Text", answer));
}

TEST_F(MessageBoxAlertPresenterTest, EscapeAnswersItLikeItsOnlyButton)
{
    EXPECT_TRUE(show(AlertPresenter::Level::note, "Title", "Text", [](QMessageBox& box) {
        QTest::keyClick(&box, Qt::Key_Escape);
    }));
}

TEST_F(MessageBoxAlertPresenterTest, StandsOverTheWindowOnceThatIsVisible)
{
    QWidget* before = &m_window;
    QWidget* after = nullptr;

    show(AlertPresenter::Level::note, "Title", "Text", [&](QMessageBox& box) {
        before = box.parentWidget();
        answer(box);
    });
    m_window.show();
    show(AlertPresenter::Level::note, "Title", "Text", [&](QMessageBox& box) {
        after = box.parentWidget();
        answer(box);
    });

    EXPECT_EQ(before, nullptr);
    EXPECT_EQ(after, &m_window);
}
