#pragma once

#include "t_PersistenceMode.h"

#include <string>

/// The folder of a scope under one of the two application data folders.
namespace DataFolder {

/// The application data folder of the mode; empty for a value that is none of the two.
std::string getBase(t_PersistenceMode mode);

/// The scope's folder, without a separator at its end.
std::string getPath(const std::string& scope, t_PersistenceMode mode);

/// Makes the folder, with all that is missing above it.
///
/// What is made here for all users may be read by everybody and written by its owner alone (0755);
/// what is made for the user is the user's alone (0700).
void makeMissing(const std::string& folder, t_PersistenceMode mode);

/// Makes the scope's folder and returns its path with a separator at its end, whether it could be
/// made or not.
std::string create(const std::string& scope, t_PersistenceMode mode);

} // namespace DataFolder
