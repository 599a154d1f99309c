#pragma once

#include <string>

class CallMarker;
class Dictionary;

/// One file that holds a dictionary as a property list, between two header lines and an end line.
///
/// Only regular files are read and written; a replaced file stays beside the new one with ".bak"
/// behind its name.
class PropertyListFile {
public:
    /// Writes its messages in the call of the marker, which must outlive it.
    PropertyListFile(const CallMarker& marker, std::string path);

    /// Adds the content of the file to the dictionary.
    ///
    /// Throws KFDictionaryFileException when the file cannot be read and
    /// KFDictionaryParsingException for a wrong header; the dictionary is then untouched.
    void load(Dictionary& dictionary) const;

    /// Replaces the file. A failure leaves the file as it was and is told to the log alone.
    void save(Dictionary& dictionary) const;

private:
    std::string read() const;
    std::string replaceBy(Dictionary& dictionary) const;

    const CallMarker& m_marker;
    std::string m_path;
};
