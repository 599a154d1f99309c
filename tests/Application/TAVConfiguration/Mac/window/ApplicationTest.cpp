#include "BlockedViolations.h"
#include "ConfigurationPlace.h"
#include "CrashReport.h"
#include "KFException.h"
#include "KeptViolation.h"
#include "Later.h"
#include "LocalizedTexts.h"
#include "MarkedCalls.h"
#include "ShippedTexts.h"
#include "TavConfigurationApplication.h"
#include "runConfigurationApplication.h"

#include <QAbstractButton>
#include <QDialog>
#include <QIcon>
#include <QMessageBox>

#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// What the user does as soon as the application loop runs.
std::function<void()> userAction;

void planUserAction()
{
    later([] { userAction(); });
}
Q_COREAPP_STARTUP_FUNCTION(planUserAction)

QDialog& window()
{
    for (QWidget* const widget : QApplication::topLevelWidgets())
        if (auto* const dialog = qobject_cast<QDialog*>(widget))
            return *dialog;
    throw std::runtime_error("no window");
}

void click(const char* button)
{
    window().findChild<QAbstractButton*>(QString::fromLatin1(button))->click();
}

/// Runs the application without a screen, started with its name as the only argument.
class ApplicationTest : public testing::Test {
protected:
    int run(const std::function<void()>& action)
    {
        userAction = action;
        return runConfigurationApplication(m_argc, m_argv.data());
    }

    ConfigurationPlace m_file;
    LocalizedTexts m_texts{shippedTexts("EN")};
    TemporaryFolder m_runtimeFolder;
    ScopedEnvironment m_runtime{"XDG_RUNTIME_DIR", m_runtimeFolder.path()};
    ScopedEnvironment m_platform{"QT_QPA_PLATFORM", "offscreen"};
    std::string m_name = "TavConfiguration";
    std::array<char*, 2> m_argv{m_name.data(), nullptr};
    int m_argc = 1;
};

} // namespace

TEST_F(ApplicationTest, SaveEndsTheLoopWithStatusZero)
{
    EXPECT_EQ(run([] { click("saveButton"); }), 0);

    EXPECT_TRUE(m_file.exists());
}

TEST_F(ApplicationTest, DelegateKnowsTheWindowAndIsToldOfTheStart)
{
    const PublishedTracer tracer;
    bool isTheWindow = false;

    run([&] {
        auto& application = dynamic_cast<TavConfigurationApplication&>(*qApp);
        isTheWindow = application.delegate().window() == &window();
        click("cancelButton");
    });

    EXPECT_TRUE(isTheWindow);
    EXPECT_THAT(
        callsIn(tracer.lines()),
        testing::Contains("  TAV_AdminAppDelegate::applicationDidFinishLaunching").Times(1));
}

TEST_F(ApplicationTest, CancelEndsTheLoopWithStatusZero)
{
    EXPECT_EQ(run([] { click("cancelButton"); }), 0);

    EXPECT_FALSE(m_file.exists());
}

TEST_F(ApplicationTest, ClosingTheWindowEndsTheLoopWithStatusZero)
{
    EXPECT_EQ(run([] { window().close(); }), 0);

    EXPECT_FALSE(m_file.exists());
}

TEST_F(ApplicationTest, AlertOfTheModelIsAMessageBoxAndLeavesTheWindowOpen)
{
    QString title;
    QString text;
    bool windowStaysOpen = false;

    run([&] {
        later([&] {
            auto& box = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
            title = box.windowTitle();
            text = box.text();
            box.accept();
        });
        click("radioButtonEnableMonitoring");
        click("saveButton");
        windowStaysOpen = window().isVisible() && window().isEnabled();
        click("cancelButton");
    });

    EXPECT_EQ(title, "Incomplete settings");
    EXPECT_EQ(text, "Enter the IP address that is to be monitored.");
    EXPECT_TRUE(windowStaysOpen);
    EXPECT_FALSE(m_file.exists());
}

TEST_F(ApplicationTest, MissingTextIsToldInAMessageBoxOfTheLocalizer)
{
    QString title;
    const auto listen = [&] {
        later([&] {
            title = QApplication::activeModalWidget()->windowTitle();
            QApplication::activeModalWidget()->close();
        });
        Localizer::getInstance()->getLocalizedString("ABSENT");
        click("cancelButton");
    };

    run(listen);

    EXPECT_EQ(title, "Localized string not found");
}

TEST_F(ApplicationTest, LocalizerHasNoPresenterOnceTheWindowIsGone)
{
    run([] { click("cancelButton"); });

    EXPECT_FALSE(Localizer::getInstance()->MessageBox("Title", "nobody shows this"));
}

TEST_F(ApplicationTest, LocalizerKeepsItsTextsOnceTheWindowIsGone)
{
    run([] { click("cancelButton"); });

    EXPECT_EQ(Localizer::getInstance()->getLocalizedString("SAVE_BUTTON"), "Save");
}

TEST_F(ApplicationTest, HasNameDesktopFileAndIcon)
{
    QString name;
    QString desktopFile;
    QList<QSize> iconSizes;

    run([&] {
        name = QApplication::applicationName();
        desktopFile = QApplication::desktopFileName();
        iconSizes = window().windowIcon().availableSizes();
        click("cancelButton");
    });

    EXPECT_EQ(name, "TavConfiguration");
    EXPECT_EQ(desktopFile, "TavConfiguration");
    for (const int size : {16, 32, 48, 64, 128, 256})
        EXPECT_TRUE(iconSizes.contains(QSize(size, size))) << size;
}

TEST_F(ApplicationTest, ToolkitsOwnTextsAreInTheUsersLanguage)
{
    const ScopedEnvironment language("LANGUAGE", "fr");
    QString cancel;

    run([&] {
        cancel = QApplication::translate("QPlatformTheme", "Cancel");
        click("cancelButton");
    });

    EXPECT_EQ(cancel, "Annuler");
}

TEST_F(ApplicationTest, ToolkitTakesItsOwnArgumentsOut)
{
    std::string option = "-platform";
    std::string value = "offscreen";
    std::array<char*, 4> argv{m_name.data(), option.data(), value.data(), nullptr};
    int argc = 3;
    userAction = [] { click("cancelButton"); };

    EXPECT_EQ(runConfigurationApplication(argc, argv.data()), 0);
    EXPECT_EQ(argc, 1);
}

TEST_F(ApplicationTest, ExceptionOfTheProgramInTheLoopEndsInItsReport)
{
    const auto fail = [] { throw KFException("BROKEN", "Some/Unit", 12); };

    EXPECT_EXIT(
        {
            CrashReport::printOnStandardError();
            run(fail);
        },
        testing::ExitedWithCode(0),
        testing::HasSubstr("INTERNAL ERROR : Exception : BROKEN on file Some/Unit line 12 - In "
                           "File : Some/Unit - At Line : 12\n"));
}

TEST_F(ApplicationTest, ExceptionOfTheProgramInTheWindowsSetUpEndsInItsReport)
{
    EXPECT_EXIT(
        {
            CrashReport::printOnStandardError();
            Localizer::destroyInstance();
            run([] {});
        },
        testing::ExitedWithCode(0),
        testing::HasSubstr("INTERNAL ERROR : Localizer Exception : LOCALIZER_NOT_INITIALIZED on "
                           "file Application/Common/Localizer/src/Mac/Localizer at line 188 - In "
                           "File : Application/Common/Localizer/src/Mac/Localizer - At Line : "
                           "188\n"));
}

TEST_F(ApplicationTest, ReportOfAnExceptionKeepsTheCodeZero)
{
    EXPECT_EXIT(
        {
            const BlockedViolations blocked;
            TavConfigurationApplication::endWithReport(KFException("BROKEN", "Some/Unit", 12));
            _exit(KeptViolation::code() == "0" ? 7 : 8);
        },
        testing::ExitedWithCode(7), "");
}

TEST_F(ApplicationTest, ReportOfAnExceptionIsMarked)
{
    const PublishedTracer tracer;

    EXPECT_EXIT(
        TavConfigurationApplication::endWithReport(KFException("BROKEN", "Some/Unit", 12)),
        testing::ExitedWithCode(0), "");

    EXPECT_THAT(
        tracer.linesOfAllThreads(),
        testing::HasSubstr("]TavConfigurationApplication::endWithReport\n"));
}

TEST_F(ApplicationTest, IsCountedFromConstructorToDestructor)
{
    expectCounted("TavConfigurationApplication", [this] {
        return std::make_unique<TavConfigurationApplication>(m_argc, m_argv.data());
    });
}

TEST_F(ApplicationTest, OtherExceptionInTheLoopEndsInTheReportOfTheAbort)
{
    const auto fail = [] { throw std::runtime_error("broken"); };

    EXPECT_EXIT(
        {
            CrashReport::printOnStandardError();
            run(fail);
        },
        testing::ExitedWithCode(0), "SIGNAL_ABORT");
}
