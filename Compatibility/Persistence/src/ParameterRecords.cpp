#include "ParameterRecords.h"

#include "CallMarker.h"

#include <utility>

t_BinaryParamMap ParameterRecords::parse(std::string_view bytes)
{
    CallMarker marker("ParameterRecords::parse");
    return takeAll(bytes);
}

t_BinaryParamMap ParameterRecords::takeAll(std::string_view& bytes)
{
    CallMarker marker("ParameterRecords::takeAll");
    t_BinaryParamMap parameters;
    while (auto parameter = t_Param::unMarshall(bytes)) {
        const std::string name = parameter->getName();
        // The records are sorted, as a rule.
        parameters.insert_or_assign(parameters.end(), name, std::move(*parameter));
    }
    return parameters;
}

std::string ParameterRecords::toBytes(const t_BinaryParamMap& parameters)
{
    CallMarker marker("ParameterRecords::toBytes");
    std::string bytes;
    for (const auto& [name, parameter] : parameters)
        bytes += parameter.marshall();
    return bytes;
}
