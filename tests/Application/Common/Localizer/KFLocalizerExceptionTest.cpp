#include "KFLocalizerAlreadyInitializedException.h"
#include "KFLocalizerFileNotCorrectlyFormattedException.h"
#include "KFLocalizerFileNotFoundException.h"
#include "KFLocalizerNotInitializedException.h"

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
