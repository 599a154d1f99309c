#include "DictionaryIterator.h"

#include "CallMarker.h"
#include "Dictionary.h"

DictionaryIterator::DictionaryIterator(Dictionary& dictionary)
    : m_entries(&DictionaryEntries::of(dictionary)), m_position(m_entries->begin())
{
    CallMarker marker("DictionaryIterator", "DictionaryIterator::constructor", true, this);
}

DictionaryIterator::~DictionaryIterator()
{
    CallMarker marker("DictionaryIterator", "DictionaryIterator::destructor", false, this);
}

bool DictionaryIterator::atEnd()
{
    CallMarker marker("bool DictionaryIterator::atEnd()", this);

    return m_position == m_entries->end();
}

DictionaryIterator& DictionaryIterator::next()
{
    CallMarker marker("DictionaryIterator& DictionaryIterator::next()", this);

    if (!atEnd())
        ++m_position;
    return *this;
}

Item* DictionaryIterator::current()
{
    CallMarker marker("Item* DictionaryIterator::current()", this);

    return atEnd() ? nullptr : m_position->second.get();
}

std::string DictionaryIterator::key()
{
    CallMarker marker("std::string DictionaryIterator::key()", this);

    return atEnd() ? std::string() : m_position->first;
}

const char* DictionaryIterator::value()
{
    CallMarker marker("const char* DictionaryIterator::value()", this);

    const Item* const item = current();
    return item == nullptr ? nullptr : item->getValue();
}

bool DictionaryIterator::getValueAs(int& out)
{
    CallMarker marker("bool DictionaryIterator::getValueAs(int&)", this);

    const Item* const item = current();
    return item != nullptr && item->getValueAs(out);
}

Dictionary* DictionaryIterator::currentDictionary()
{
    CallMarker marker("Dictionary* DictionaryIterator::currentDictionary()", this);

    Item* const item = current();
    return item == nullptr ? nullptr : item->getAsDictionary();
}

DictionaryIterator& DictionaryIterator::firstDictionary()
{
    CallMarker marker("DictionaryIterator& DictionaryIterator::firstDictionary()", this);

    while (!atEnd() && currentDictionary() == nullptr)
        next();
    return *this;
}

DictionaryIterator& DictionaryIterator::nextDictionary()
{
    CallMarker marker("DictionaryIterator& DictionaryIterator::nextDictionary()", this);

    return next().firstDictionary();
}
