#pragma once

#include "DictionaryDescent.h"

#include <string>

/// Visits the dictionaries below one dictionary, depth first and in key order, each inside the
/// trace of a call of its own:
///
///     DictionaryWalk walk(*this, marker);
///     for (Dictionary* here = this; here != nullptr; here = walk.next())
///
/// The dictionary that it stands on may be changed before the walk goes on, one above it may not.
class DictionaryWalk {
public:
    /// Whether the trace tells of each entry that is passed by because it is no dictionary.
    enum class Leaves { silent, told };

    /// Starts on `root`, in the call of the marker, which must outlive the walk.
    DictionaryWalk(const Dictionary& root, const CallMarker& outer, Leaves leaves = Leaves::silent);

    /// Goes on to the children of the dictionary that the walk stands on, then beside and above it;
    /// Null at the end.
    Dictionary* next();
    /// As next(), but leaves out what is below the dictionary that the walk stands on.
    Dictionary* nextBeside();

    /// How many levels below the root the walk stands.
    std::size_t depth() const { return m_descent.depth() - 1; }
    /// The dotted path of a name in the dictionary that the walk stands on.
    std::string pathOf(const std::string& name) const { return m_descent.pathOf(name); }

private:
    Dictionary* advance();

    const CallMarker& m_outer;
    Leaves m_leaves;
    DictionaryDescent m_descent;
};
