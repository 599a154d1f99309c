#pragma once

#include "AppDataManager.h"
#include "PrivateDataFolders.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

/// The manager on private folders, its global scope "scope". It lives as long as the process and
/// keeps the stores of a domain for ever, so each test has a domain of its own: the name of the
/// test.
class AppDataFixture : public testing::Test {
protected:
    AppDataFixture() { manager.setGlobalScope("scope"); }

    static void put(const TemporaryFolder& folder, const std::string& name)
    {
        std::filesystem::create_directories(std::filesystem::path(folder.file(name)).parent_path());
        folder.write(name, "x");
    }

    PrivateDataFolders folders;
    const std::string domain = testing::UnitTest::GetInstance()->current_test_info()->name();
    AppDataManager& manager = *AppDataManager::getInstance();
};
