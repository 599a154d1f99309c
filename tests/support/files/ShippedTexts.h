#pragma once

#include "SafeFile.h"

#include <string>

/// The content of a localization file as it stands beside the executable; empty when there is none.
/// TAV_BIN_FOLDER is the executable's folder.
inline std::string shippedTexts(const std::string& language)
{
    const std::string path =
        std::string(TAV_BIN_FOLDER) + "/Localizer_TavConfiguration_" + language + ".cfg";
    return SafeFile::read(path).value_or("");
}
