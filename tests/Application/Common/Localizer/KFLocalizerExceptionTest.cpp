#include "KFLocalizerAlreadyInitializedException.h"
#include "KFLocalizerFileNotCorrectlyFormattedException.h"
#include "KFLocalizerFileNotFoundException.h"
#include "KFLocalizerNotInitializedException.h"
#include "MarkedCalls.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

TEST(KFLocalizerException, ToStringNamesFailureFileAndLine)
{
    const KFLocalizerException exception("SOME_NAME", "Some/Unit", 12);

    EXPECT_EQ(exception.toString(), "Localizer Exception : SOME_NAME on file Some/Unit at line 12");
}

TEST(KFLocalizerException, KeepsNameFileAndLine)
{
    const KFLocalizerException exception("SOME_NAME", "Some/Unit", 12);

    EXPECT_STREQ(exception.what(), "SOME_NAME");
    EXPECT_EQ(exception.getFileName(), "Some/Unit");
    EXPECT_EQ(exception.getLine(), 12);
}

TEST(KFLocalizerException, EachFailureHasItsName)
{
    EXPECT_STREQ(
        KFLocalizerAlreadyInitializedException("f", 1).what(), "LOCALIZER_ALREADY_INITIALIZED");
    EXPECT_STREQ(KFLocalizerFileNotFoundException("f", 1).what(), "LOCALIZATION_FILE_NOT_FOUND");
    EXPECT_STREQ(
        KFLocalizerFileNotCorrectlyFormattedException("f", 1).what(),
        "FILE_NOT_CORRECTLY_FORMATTED");
    EXPECT_STREQ(KFLocalizerNotInitializedException("f", 1).what(), "LOCALIZER_NOT_INITIALIZED");
}

TEST(KFLocalizerException, IsMarkedAndCounted)
{
    const KFLocalizerException exception("SOME_NAME", "Some/Unit", 12);

    expectMarked("KFLocalizerException::toString", &exception, [&] {
        static_cast<void>(exception.toString());
    });
    expectCounted("KFLocalizerException", [] {
        return std::make_unique<KFLocalizerException>("SOME_NAME", "Some/Unit", 12);
    });
    expectCounted(
        "KFLocalizerException", [&] { return std::make_unique<KFLocalizerException>(exception); });
}

TEST(KFLocalizerException, EachFailureIsCounted)
{
    expectExceptionCounted<KFLocalizerAlreadyInitializedException>(
        "KFLocalizerAlreadyInitializedException", "Some/Unit", 12);
    expectExceptionCounted<KFLocalizerFileNotFoundException>(
        "KFLocalizerFileNotFoundException", "Some/Unit", 12);
    expectExceptionCounted<KFLocalizerFileNotCorrectlyFormattedException>(
        "KFLocalizerFileNotCorrectlyFormattedException", "Some/Unit", 12);
    expectExceptionCounted<KFLocalizerNotInitializedException>(
        "KFLocalizerNotInitializedException", "Some/Unit", 12);
}
