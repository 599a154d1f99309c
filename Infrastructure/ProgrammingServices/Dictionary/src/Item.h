#pragma once

#include <list>
#include <sstream>
#include <string>

class Dictionary;

/// A named entry of a property tree: the base of texts, integers and dictionaries, with the answers
/// of an entry that is none of these.
///
/// An item that is stored in a dictionary belongs to it and ends with it. One thread uses a tree at
/// a time. A lookup that finds nothing is no failure: it answers null, false or an empty list.
class Item {
public:
    Item();
    explicit Item(std::string name);
    /// Copies the name, which is all that an item holds by itself.
    Item(const Item& other);
    Item& operator=(const Item& other);

    // The order of the virtual operations is fixed: it is the order of the slots.

    virtual bool equals(const Item& other) = 0;
    /// A new item of the same class, name and value; the caller owns it.
    virtual Item* clone() = 0;
    virtual ~Item();
    virtual const char* findValue(const std::string& path) const;
#pragma GCC diagnostic push
    // Dictionary hides this one on purpose; g++ reports that here, clang over there.
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
    virtual std::list<const char*> findValues(const std::string& path);
#pragma GCC diagnostic pop
    virtual Dictionary* getAsDictionary();
    /// The item's own text, valid until the item is changed or destroyed.
    virtual const char* getValue() const;
    virtual const char* getValue(const std::string& path) const;
    /// Stores the item's own integer; leaves `out` alone when there is none.
    virtual bool getValueAs(int& out) const;
    virtual bool getValueAs(const std::string& path, int& out) const;
    virtual bool contains(const std::string& path);
    virtual Item* getItem(const std::string& path) const = 0;
    virtual Item* getItem(const char* path) const = 0;
    /// The item's lines of a property list, each line that is indented behind `indent`.
    virtual std::string marshall(const std::string& indent) = 0;
    /// A description for traces.
    virtual std::string toString(const std::string& indent) = 0;
    /// Takes the value from the next lines of a property list.
    virtual void unMarshall(std::stringstream& in) = 0;

    const std::string& getName() const;
    void setName(const std::string& name);

    /// The text without the blanks, tabs and line feeds around it; carriage returns stay.
    static std::string trim(const std::string& text);

    /// The trimmed text between `tag`, such as "<key>", and the first "</" of the line.
    ///
    /// Throws KFDictionaryParsingException when the line lacks the tag.
    static std::string getXmlVal(const char* tag, const std::string& line);

private:
    std::string m_name;
};
