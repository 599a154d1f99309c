#pragma once

#include "t_Param.h"

#include <map>
#include <string>
#include <string_view>

/// Parameter name to parameter, in the order of the names' bytes.
using t_BinaryParamMap = std::map<std::string, t_Param>;

/// The content of a binary parameter file: one record after the other, nothing else.
namespace ParameterRecords {

/// Reads the records up to the end of the bytes or to the first that is broken, which ends the
/// reading there. A name that stands twice has the later data.
t_BinaryParamMap parse(std::string_view bytes);

/// The same, and takes what was read off the front of the bytes: what is left begins with the
/// broken record.
t_BinaryParamMap takeAll(std::string_view& bytes);

std::string toBytes(const t_BinaryParamMap& parameters);

} // namespace ParameterRecords
