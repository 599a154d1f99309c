#pragma once

#include "Descent.h"
#include "DictionaryEntries.h"

#include <sstream>
#include <string>

/// Reads one dictionary, with everything below it, from the lines of a property list.
///
/// No XML parser: it reads a line at a time and finds the tags anywhere in it. The first line
/// without a key where one is expected ends the innermost dictionary, without any failure.
class PropertyListReader {
public:
    /// The stream must outlive it.
    PropertyListReader(const CallMarker& outer, std::stringstream& in);

    /// Adds what is read to `root`, replacing what stands under the same key. The stream is left
    /// behind the line that ended the dictionary, its state cleared.
    void read(Dictionary& root);

private:
    void nextLine();
    bool lineHas(const char* tag) const;
    void readEntry();
    void readValue(const std::string& key);
    void readLeaf(const std::string& key, std::unique_ptr<Item> leaf, std::streampos start);
    void enter(const std::string& key);
    void leave();

    // The entries of the dictionaries that are being read.
    Descent<DictionaryEntries*> m_open;
    std::stringstream& m_in;
    std::string m_line;
};
