#pragma once

#include "Item.h"

/// An entry that holds a 32-bit integer.
///
/// Kept: it answers getValueAs(int&) alone; its getValue() is null.
class IntBasicItem : public Item {
public:
    IntBasicItem();
    explicit IntBasicItem(const std::string& name);
    IntBasicItem(const std::string& name, int value);
    IntBasicItem(const IntBasicItem& other);
    IntBasicItem& operator=(const IntBasicItem& other);

    using Item::getValueAs;

    /// Equal to an integer of the same name and number.
    bool equals(const Item& other) override;
    Item* clone() override;
    ~IntBasicItem() override;
    bool getValueAs(int& out) const override;
    Item* getItem(const std::string& path) const override;
    Item* getItem(const char* path) const override;
    /// Kept: the line starts at the left margin whatever the indent, and the tag is "<int>": that
    /// is how the files are.
    std::string marshall(const std::string& indent) override;
    std::string toString(const std::string& indent) override;
    /// Reads one line. Throws KFDictionaryParsingException, with the value unchanged, when the line
    /// is no "<int>" line. The number is read up to its first non-digit, 0 when there is none; one
    /// that does not fit becomes the nearest that does.
    void unMarshall(std::stringstream& in) override;

    void setValue(int value);

private:
    int m_value = 0;
};
