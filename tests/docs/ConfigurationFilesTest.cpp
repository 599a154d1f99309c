#include "FileContent.h"
#include "IDCardReader.h"
#include "JoinedOutputs.h"
#include "Localizer.h"
#include "Logger.h"
#include "RecordingAlertPresenter.h"
#include "TemporaryFolder.h"
#include "Tracer.h"

#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

std::string document()
{
    return contentOf(TAV_DOCUMENT);
}

/// The document's examples of one file: the blocks behind a line "```<file>".
std::vector<std::string> examplesOf(const std::string& file)
{
    std::vector<std::string> examples;
    bool inside = false;
    std::istringstream lines(document());
    for (std::string line; std::getline(lines, line);) {
        if (inside && line == "```")
            inside = false;
        else if (inside)
            examples.back() += line + "\n";
        else if (line == "```" + file) {
            inside = true;
            examples.emplace_back();
        }
    }
    return examples;
}

/// Lets a log or a tracer read a file as the tool does; returns what it tells on standard error.
template<typename Facility>
std::string errorsOfReading(Facility& facility, const std::string& file)
{
    Facility::SetInstance(&facility);
    testing::internal::CaptureStderr();
    facility.ReadConfigFile(file.c_str());
    return testing::internal::GetCapturedStderr();
}

/// The document quotes what the tool prints as a line of its own, indented.
void expectQuoted(const std::string& line)
{
    EXPECT_THAT(document(), testing::HasSubstr("\n    " + line)) << line;
}

/// Whether the document says, in a line of its own, that this goes to standard output.
bool isNamedAsOutput(const std::string& line)
{
    const std::string text = "\n`" + line.substr(0, line.find('\n')) + "` on standard output.\n";
    return line.ends_with('\n') && document().find(text) != std::string::npos;
}

} // namespace

TEST(ConfigurationFilesDocument, ShowsALogOfTheStartUpWarningsAndErrors)
{
    const std::vector<std::string> examples = examplesOf("logger.cfg");
    ASSERT_EQ(examples.size(), 2U);
    const TemporaryFolder folder;
    Logger logger;
    logger.SetFolderName(folder.path() + "/");

    EXPECT_EQ(errorsOfReading(logger, folder.write("logger.cfg", examples[0])), "");

    EXPECT_TRUE(logger.isActive());
    EXPECT_TRUE(logger.printsTime());
    EXPECT_FALSE(logger.isSynchronous());
    EXPECT_EQ(logger.getLevelMask(), 14U);
    EXPECT_EQ(logger.getMaxFiles(), 5);
    EXPECT_EQ(logger.getMaxLinesPerFile(), 5000);
    EXPECT_EQ(logger.getCurrentFileName(), folder.file("TavConfiguration_log_0.txt"));
}

TEST(ConfigurationFilesDocument, ShowsALogOfEverythingOnTheTerminal)
{
    const std::vector<std::string> examples = examplesOf("logger.cfg");
    ASSERT_EQ(examples.size(), 2U);
    const TemporaryFolder folder;
    Logger logger;

    EXPECT_EQ(errorsOfReading(logger, folder.write("logger.cfg", examples[1])), "");

    EXPECT_TRUE(logger.isActive());
    EXPECT_EQ(logger.getLevelMask(), 511U);
    EXPECT_EQ(logger.getCurrentFileName(), "console");
}

TEST(ConfigurationFilesDocument, ShowsATraceOfAllCallsButTheDictionarys)
{
    const std::vector<std::string> examples = examplesOf("tracer.cfg");
    ASSERT_EQ(examples.size(), 1U);
    const TemporaryFolder folder;
    Tracer tracer;
    tracer.SetFolderName(folder.path() + "/");

    EXPECT_EQ(errorsOfReading(tracer, folder.write("tracer.cfg", examples[0])), "");

    EXPECT_TRUE(tracer.isActive());
    EXPECT_TRUE(tracer.getPrintExit());
    EXPECT_TRUE(tracer.getTreeIndent());
    EXPECT_TRUE(tracer.getPrintTime());
    EXPECT_EQ(tracer.getMsgTypeMask(), 7U);
    EXPECT_EQ(tracer.getMaxFiles(), 3);
    EXPECT_EQ(tracer.getCurrentFileName(), folder.file("TavConfiguration_trace_0.txt"));
    EXPECT_TRUE(tracer.isThreadPermittedToPrint("Main"));
    EXPECT_TRUE(tracer.isCallPermittedToPrint("TavConfiguration::Main"));
    EXPECT_TRUE(
        tracer.isCallForbiddenToPrint("Item* Dictionary::getItem(const std::string&) const"));
    EXPECT_TRUE(tracer.isCallForbiddenToPrint("bool BasicItem::equals(const Item&)"));
    EXPECT_FALSE(tracer.isCallForbiddenToPrint("DictionaryConfiguration::constructor"));
}

TEST(ConfigurationFilesDocument, QuotesTheWarningsOfFilesThatCannotBeOpened)
{
    const TemporaryFolder folder;
    Logger logger;
    Tracer tracer;
    const auto installed = [&](const std::string& warning) {
        return std::regex_replace(warning, std::regex(folder.path()), "/opt/tav");
    };

    expectQuoted(installed(errorsOfReading(logger, folder.file("logger.cfg"))));
    expectQuoted(installed(errorsOfReading(tracer, folder.file("tracer.cfg"))));
}

TEST(ConfigurationFilesDocument, QuotesTheSyntaxErrors)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("wrong.cfg", "\n\nwrong\n");
    Logger logger;
    Tracer tracer;

    expectQuoted(errorsOfReading(logger, file));
    expectQuoted(errorsOfReading(tracer, file));
}

TEST(ConfigurationFilesDocumentDeathTest, NamesTheTextsOfAMissingFileName)
{
    const auto initialize = [](auto&& facility) {
        joinOutputs();
        facility.Initialize();
    };

    EXPECT_EXIT(initialize(Logger()), testing::ExitedWithCode(1), testing::Truly(isNamedAsOutput));
    EXPECT_EXIT(initialize(Tracer()), testing::ExitedWithCode(1), testing::Truly(isNamedAsOutput));
}

TEST(ConfigurationFilesDocument, NamesTheDefaultsOfTheRings)
{
    const Logger logger;
    const Tracer tracer;
    const auto row = [](const char* command, const char* what, int number) {
        return "| `" + std::string(command) + "` | a number | " + what + ", " +
               std::to_string(number) + " when not given";
    };

    for (const std::string& text :
         {row("LOG_SET_MAX_LINES", "lines in one file", logger.getMaxLinesPerFile()),
          row("LOG_SET_MAX_FILES", "files in the ring", logger.getMaxFiles()),
          row("TRACE_SET_MAX_LINES", "lines in one file", tracer.getMaxLinesPerFile()),
          row("TRACE_SET_MAX_FILES", "files in the ring", tracer.getMaxFiles())})
        EXPECT_THAT(document(), testing::HasSubstr(text));
}

TEST(ConfigurationFilesDocument, ShowsAnIdentityCard)
{
    const std::vector<std::string> examples = examplesOf("ID.txt");
    ASSERT_EQ(examples.size(), 1U);
    const TemporaryFolder folder;
    folder.write("ID.txt", examples[0]);
    IDCardReader reader(folder.path() + "/");

    EXPECT_TRUE(reader.readIDCard());

    EXPECT_EQ(reader.getProductName(), "Intranet Connection");
    EXPECT_EQ(reader.getCommercialVersion(), "9.2");
    EXPECT_EQ(reader.getProductVersion(), "9.2.0.118");
    EXPECT_EQ(reader.getReferenceVersion(), "9.2.0");
    EXPECT_EQ(reader.getBuildTarget(), "Release");
    EXPECT_EQ(reader.getBUName(), "Networks");
    EXPECT_EQ(reader.getUpgradeCode(), "Intranet92");
    EXPECT_EQ(reader.getIDCardParams().size(), 7U);
}

TEST(ConfigurationFilesDocument, ShowsALocalizationFile)
{
    const std::vector<std::string> examples = examplesOf("Localizer_TavConfiguration_en.cfg");
    ASSERT_EQ(examples.size(), 1U);
    const TemporaryFolder folder;
    RecordingAlertPresenter alerts;
    Localizer* const localizer = Localizer::getInstance();
    localizer->setAlertPresenter(&alerts);

    localizer->initialize(folder.write("texts.cfg", examples[0]));

    EXPECT_EQ(localizer->getLocalizedString("CANCEL_BUTTON"), "Cancel");
    EXPECT_EQ(localizer->getLocalizedString("SAVE_BUTTON"), "Save");
    EXPECT_EQ(localizer->getLocalizedString("BROWSE_BUTTON"), "Browse...");
    EXPECT_EQ(localizer->getLocalizedString("MSGOK_DLG_TITLE"), "TavConfiguration");
    EXPECT_EQ(
        localizer->getLocalizedString("MSGOK_DLG_FILL_BOTH_COMMAND_LINE"),
        "Please fill in both command lines.\nThe arguments may stay empty.");
    EXPECT_TRUE(alerts.alerts.empty());
    Localizer::destroyInstance();
}

class ConfigurationFilesDocumentWord : public testing::TestWithParam<const char*> {};

TEST_P(ConfigurationFilesDocumentWord, IsDescribed)
{
    EXPECT_THAT(document(), testing::HasSubstr("`" + std::string(GetParam()) + "`"));
}

INSTANTIATE_TEST_SUITE_P(
    Words, ConfigurationFilesDocumentWord,
    testing::Values(
        "LOG_ON", "LOG_OFF", "LOG_CLOCK", "LOG_MUST_FLUSH", "LOG_SET_FILE_NAME",
        "LOG_SET_MAX_LINES", "LOG_SET_MAX_FILES", "LOG_SET_MSG_FILTER", "LOG_DEBUG", "LOG_ERROR",
        "LOG_WARNING", "LOG_LEVEL_0", "LOG_LEVEL_1", "LOG_LEVEL_5", "TRACE_ON", "TRACE_OFF",
        "TRACE_INDENT_WITH_MARK", "TRACE_FULL_INDENT", "TRACE_CALL_EXIT", "TRACE_CLOCK",
        "TRACE_OBJECT_COUNT", "TRACE_MUST_FLUSH", "TRACE_THE_THREAD", "TRACE_THE_CALL",
        "TRACE_SET_FILE_NAME", "TRACE_SET_MAX_LINES", "TRACE_SET_MAX_FILES", "TRACE_SET_MSG_FILTER",
        "TRACE_SET_BUFFER_FORMAT_HEX", "TRACE_SET_BUFFER_FORMAT_DEC", "TRACE_SET_BUFFER_FORMAT_CHR",
        "TRACE_DEBUG", "TRACE_ERROR", "TRACE_WARNING", "TRACE_LEVEL_0", "TRACE_LEVEL_5", "FLEET_ID",
        "CUSTOMER_ID", "GENERATION_VERSION", "IT_MANAGER", "BU_NAME", "REFERENCE_VERSION",
        "PRODUCT_NAME", "BUILD_TARGET", "COMMERCIAL_VERSION", "PRODUCT_VERSION", "UPGRADE_CODE"));
