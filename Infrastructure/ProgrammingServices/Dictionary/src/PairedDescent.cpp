#include "PairedDescent.h"

void PairedDescent::enterBeside(const Dictionary& theirs)
{
    Level& level = m_levels.here();
    level.theirs = &DictionaryEntries::of(theirs);
    level.next = level.theirs->begin();
}

const DictionaryEntries::Entry* PairedDescent::next()
{
    Level& level = m_levels.here();
    return level.next == level.theirs->end() ? nullptr : &*level.next++;
}
