#include "ParameterRecords.h"

#include "CallMarker.h"

t_BinaryParamMap ParameterRecords::parse(std::string_view bytes)
{
    CallMarker marker("ParameterRecords::parse");
    t_BinaryParamMap parameters;
    while (const auto parameter = t_Param::unMarshall(bytes))
        parameters.insert_or_assign(parameter->getName(), *parameter);
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
