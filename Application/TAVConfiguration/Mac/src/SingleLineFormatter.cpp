#include "SingleLineFormatter.h"

#include "CallMarker.h"

#include <algorithm>

SingleLineFormatter::SingleLineFormatter(QObject* parent) : QValidator(parent)
{
    CallMarker marker("SingleLineFormatter", "SingleLineFormatter::constructor", true, this);
}

SingleLineFormatter::~SingleLineFormatter()
{
    CallMarker marker("SingleLineFormatter", "SingleLineFormatter::destructor", false, this);
}

QValidator::State SingleLineFormatter::validate(QString& text, int& /*cursor*/) const
{
    CallMarker marker("SingleLineFormatter::validate", this);
    const auto cannotBeKept = [](QChar c) { return c == u'\n' || c == u'\r' || c == u'\0'; };
    std::replace_if(text.begin(), text.end(), cannotBeKept, QChar(u' '));
    return Acceptable;
}
