#include "Localizer.h"

#include "BlockedViolations.h"
#include "CrashReport.h"
#include "KFLocalizerAlreadyInitializedException.h"
#include "KFLocalizerFileNotCorrectlyFormattedException.h"
#include "KFLocalizerFileNotFoundException.h"
#include "KFLocalizerNotInitializedException.h"
#include "MarkedCalls.h"
#include "RecordingAlertPresenter.h"
#include "TemporaryFolder.h"

#include <cstdio>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using Alerts = std::vector<RecordingAlertPresenter::Alert>;

namespace {

const std::string unit = "Application/Common/Localizer/src/Mac/Localizer";

class LocalizerTest : public testing::Test {
protected:
    LocalizerTest() { localizer()->setAlertPresenter(&m_alerts); }
    ~LocalizerTest() override { Localizer::destroyInstance(); }

    static Localizer* localizer() { return Localizer::getInstance(); }

    std::string write(const std::string& content) const
    {
        return m_folder.write("texts.cfg", content);
    }

    /// Loads the content and returns the file's path.
    std::string load(const std::string& content) const
    {
        std::string path = write(content);
        localizer()->initialize(path);
        return path;
    }

    template<typename Exception>
    static void expectFailure(const std::string& path, int line)
    {
        try {
            localizer()->initialize(path);
            FAIL() << "nothing was thrown";
        } catch (const Exception& exception) {
            EXPECT_EQ(exception.getFileName(), unit);
            EXPECT_EQ(exception.getLine(), line);
        }
    }

    TemporaryFolder m_folder;
    RecordingAlertPresenter m_alerts;
};

} // namespace

TEST_F(LocalizerTest, InstanceIsTheSameUntilDestroyed)
{
    load("KEY=text\n");

    EXPECT_EQ(localizer()->getLocalizedString("KEY"), "text");

    Localizer::destroyInstance();
    EXPECT_THROW(localizer()->getLocalizedString("KEY"), KFLocalizerNotInitializedException);
}

TEST_F(LocalizerTest, DestroyingTwiceIsHarmless)
{
    Localizer::destroyInstance();
    Localizer::destroyInstance();

    EXPECT_NE(localizer(), nullptr);
}

TEST_F(LocalizerTest, MissingFileIsNotFound)
{
    expectFailure<KFLocalizerFileNotFoundException>(m_folder.file("none.cfg"), 170);
}

TEST_F(LocalizerTest, EmptyFileNameIsNotFound)
{
    expectFailure<KFLocalizerFileNotFoundException>("", 170);
}

TEST_F(LocalizerTest, FolderIsNotFound)
{
    expectFailure<KFLocalizerFileNotFoundException>(m_folder.path(), 170);
}

TEST_F(LocalizerTest, FifoIsNotFoundAndDoesNotHang)
{
    const std::string fifo = m_folder.file("fifo.cfg");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);

    expectFailure<KFLocalizerFileNotFoundException>(fifo, 170);
}

TEST_F(LocalizerTest, LinkLeadsToItsFile)
{
    const std::string link = m_folder.file("link.cfg");
    ASSERT_EQ(symlink(write("KEY=text\n").c_str(), link.c_str()), 0);

    localizer()->initialize(link);

    EXPECT_EQ(localizer()->getLocalizedString("KEY"), "text");
}

TEST_F(LocalizerTest, OtherEncodingIsAFormatErrorAndNotAMissingFile)
{
    expectFailure<KFLocalizerFileNotCorrectlyFormattedException>(write("KEY=caf\xE9\n"), 165);
}

TEST_F(LocalizerTest, SecondInitialisationFailsAndKeepsTheFirstTexts)
{
    const std::string first = load("KEY=first\n");
    const std::string second = m_folder.write("second.cfg", "KEY=second\n");

    expectFailure<KFLocalizerAlreadyInitializedException>(first, 175);
    expectFailure<KFLocalizerAlreadyInitializedException>(second, 175);
    expectFailure<KFLocalizerAlreadyInitializedException>(m_folder.file("none.cfg"), 175);

    EXPECT_EQ(localizer()->getLocalizedString("KEY"), "first");
}

TEST_F(LocalizerTest, FailedInitialisationLeavesRoomForAnotherFile)
{
    const std::string notUtf8 = m_folder.write("bad.cfg", "KEY=good\nOTHER=\xFF\n");
    EXPECT_THROW(localizer()->initialize(notUtf8), KFLocalizerFileNotCorrectlyFormattedException);
    EXPECT_THROW(localizer()->getLocalizedString("KEY"), KFLocalizerNotInitializedException);

    load("ANOTHER=text\n");

    EXPECT_EQ(localizer()->getLocalizedString("ANOTHER"), "text");
    EXPECT_EQ(localizer()->getLocalizedString("KEY"), "KEY");
}

TEST_F(LocalizerTest, EmptyFileInitialises)
{
    load("");

    EXPECT_EQ(localizer()->getLocalizedString("KEY"), "KEY");
}

TEST_F(LocalizerTest, AskingBeforeInitialisationFails)
{
    try {
        localizer()->getLocalizedString("KEY");
        FAIL() << "nothing was thrown";
    } catch (const KFLocalizerNotInitializedException& exception) {
        EXPECT_EQ(exception.getFileName(), unit);
        EXPECT_EQ(exception.getLine(), 188);
    }
    EXPECT_TRUE(m_alerts.alerts.empty());
}

TEST_F(LocalizerTest, PresentKeyShowsNoAlert)
{
    load("KEY=text\n");

    EXPECT_EQ(localizer()->getLocalizedString("KEY"), "text");
    EXPECT_TRUE(m_alerts.alerts.empty());
}

TEST_F(LocalizerTest, AbsentKeyIsReturnedAndReportedEveryTime)
{
    const std::string path = load("KEY=text\n");
    const RecordingAlertPresenter::Alert alert{
        AlertPresenter::Level::stop, "Localized string not found",
        "The key 'ABSENT' is absent from the '" + path + "' localization file."};

    EXPECT_EQ(localizer()->getLocalizedString("ABSENT"), "ABSENT");
    EXPECT_EQ(localizer()->getLocalizedString("ABSENT"), "ABSENT");

    EXPECT_EQ(m_alerts.alerts, (Alerts{alert, alert}));
}

TEST_F(LocalizerTest, AbsentKeyIsReturnedWithoutPresenterToo)
{
    load("KEY=text\n");
    localizer()->setAlertPresenter(nullptr);

    EXPECT_EQ(localizer()->getLocalizedString("ABSENT"), "ABSENT");
}

TEST_F(LocalizerTest, BlankBehindTheKeyMakesItAnotherKey)
{
    load("A = b\n");

    EXPECT_EQ(localizer()->getLocalizedString("A"), "A");
    EXPECT_EQ(localizer()->getLocalizedString("A "), " b");
}

TEST_F(LocalizerTest, EmptyKeyIsAKey)
{
    load("=text\n");

    EXPECT_EQ(localizer()->getLocalizedString(""), "text");
}

TEST_F(LocalizerTest, ParametersAreReplacedWhereverTheyStand)
{
    load("KEY=name, Name and name: $1\n");

    EXPECT_EQ(
        localizer()->getLocalizedString("KEY", {{"name", "Ann"}, {"$1", "100%s"}}),
        "Ann, Name and Ann: 100%s");
}

TEST_F(LocalizerTest, ParametersAreReplacedOneAfterTheOther)
{
    load("KEY=a b\n");

    EXPECT_EQ(localizer()->getLocalizedString("KEY", {{"a", "b"}, {"b", "c"}}), "c c");
}

TEST_F(LocalizerTest, EmptyParameterNameReplacesNothing)
{
    load("KEY=text\n");

    EXPECT_EQ(localizer()->getLocalizedString("KEY", {{"", "X"}}), "text");
}

TEST_F(LocalizerTest, FormattingLeavesTheTextItselfAlone)
{
    load("KEY=a\n");

    localizer()->getLocalizedString("KEY", {{"a", "b"}});

    EXPECT_EQ(localizer()->getLocalizedString("KEY"), "a");
}

TEST_F(LocalizerTest, FormattedTextStaysOwnedUntilTheKeyIsFormattedAgain)
{
    load("KEY=a\nOTHER=a\n");
    const std::string& formatted = localizer()->getLocalizedString("KEY", {{"a", "first"}});

    localizer()->getLocalizedString("OTHER", {{"a", "other"}});
    EXPECT_EQ(formatted, "first");

    const std::string& again = localizer()->getLocalizedString("KEY", {{"a", "second"}});
    EXPECT_EQ(&again, &formatted);
    EXPECT_EQ(formatted, "second");
}

TEST_F(LocalizerTest, FormattingAnAbsentKeyReportsItAndFormatsTheKey)
{
    load("");

    EXPECT_EQ(localizer()->getLocalizedString("KEY", {{"K", "M"}}), "MEY");
    EXPECT_EQ(m_alerts.alerts.size(), 1U);
}

TEST_F(LocalizerTest, MessageBoxShowsAStopAlertAndHandsBackTheAnswer)
{
    EXPECT_TRUE(localizer()->MessageBox("Title", "50% <b>&"));
    m_alerts.answer = false;
    EXPECT_FALSE(localizer()->MessageBox("Other", "text"));

    EXPECT_EQ(
        m_alerts.alerts, (Alerts{
                             {AlertPresenter::Level::stop, "Title", "50% <b>&"},
                             {AlertPresenter::Level::stop, "Other", "text"},
                         }));
}

TEST_F(LocalizerTest, MessageBoxWithoutPresenterIsNotAnswered)
{
    localizer()->setAlertPresenter(nullptr);

    EXPECT_FALSE(localizer()->MessageBox("Title", "text"));
}

TEST_F(LocalizerTest, NullKeyEndsTheProcessWithAReport)
{
    EXPECT_CRASH_REPORT(
        localizer()->getLocalizedString(nullptr),
        "REQUIRE VIOLATION : key != NULL - In File : "
        "Application/Common/Localizer/src/Mac/Localizer - At Line : 184");
}

TEST_F(LocalizerTest, NullKeyEndsTheProcessWithParametersToo)
{
    EXPECT_CRASH_REPORT(
        localizer()->getLocalizedString(nullptr, {}),
        "REQUIRE VIOLATION : key != NULL - In File : "
        "Application/Common/Localizer/src/Mac/Localizer - At Line : 184");
}

static void tellTheTextsOfNoKey()
{
    const BlockedViolations blocked;
    const std::string text = Localizer::getInstance()->getLocalizedString(nullptr);
    const std::string& formatted =
        Localizer::getInstance()->getLocalizedString(nullptr, {{"text", "another"}});
    std::fprintf(stderr, "'%s' '%s'\n", text.c_str(), formatted.c_str());
}

TEST_F(LocalizerTest, NullKeyHasNoTextWhereViolationsAreBlocked)
{
    load("=text\n");

    EXPECT_CRASH_REPORT(
        tellTheTextsOfNoKey(), "'' ''\n"
                               "REQUIRE VIOLATION : key != NULL - In File : "
                               "Application/Common/Localizer/src/Mac/Localizer - At Line : 184");
}

struct LocalizerCall : MarkedCall<Localizer> {};

class LocalizerCalls : public LocalizerTest, public testing::WithParamInterface<LocalizerCall> {};

TEST_P(LocalizerCalls, AreMarkedWithTheirNameAndLocalizer)
{
    load("KEY=text\n");
    Localizer& called = *localizer();

    expectMarked(GetParam().text, &called, [&] { GetParam().run(called); });
}

INSTANTIATE_TEST_SUITE_P(
    Methods, LocalizerCalls,
    testing::Values(
        LocalizerCall{
            "NSString* Localizer::getLocalizedString(NSString*)",
            [](Localizer& localizer) { localizer.getLocalizedString("KEY"); }},
        LocalizerCall{
            "Localizer::getLocalizedString",
            [](Localizer& localizer) { localizer.getLocalizedString("KEY", {}); }},
        LocalizerCall{
            "Localizer::MessageBox",
            [](Localizer& localizer) { localizer.MessageBox("Title", "text"); }},
        LocalizerCall{"Localizer::setAlertPresenter", [](Localizer& localizer) {
                          localizer.setAlertPresenter(nullptr);
                      }}));

TEST_F(LocalizerTest, InitialisationIsMarked)
{
    const std::string path = write("KEY=text\n");
    Localizer& called = *localizer();

    expectMarked(
        "void Localizer::initialize(std::string)", &called, [&] { called.initialize(path); });
}

TEST_F(LocalizerTest, InstanceIsMarkedAndCountedFromItsFirstRequestToItsDestruction)
{
    Localizer::destroyInstance();
    PublishedTracer tracer;
    tracer->setPrintObjects(true);

    const void* const instance = localizer();
    localizer();
    Localizer::destroyInstance();

    EXPECT_EQ(
        tracer.lines(), entryLine("Localizer::getInstance", nullptr) +
                            entryLine("  Localizer::constructor", instance, "1    ") +
                            entryLine("Localizer::getInstance", nullptr) +
                            entryLine("Localizer::destroyInstance", nullptr) +
                            entryLine("  Localizer::destructor", instance, "0    "));
}
