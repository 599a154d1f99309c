#pragma once

#include "Item.h"

/// An entry that holds a text.
///
/// Kept: it answers getValue() alone; there is no conversion to an integer.
class BasicItem : public Item {
public:
    BasicItem();
    explicit BasicItem(const std::string& name);
    BasicItem(const std::string& name, std::string value);
    BasicItem(const BasicItem& other);
    BasicItem& operator=(const BasicItem& other);

    using Item::getValue;

    /// Equal to a text of the same name and bytes.
    bool equals(const Item& other) override;
    Item* clone() override;
    ~BasicItem() override;
    /// Never null.
    const char* getValue() const override;
    Item* getItem(const std::string& path) const override;
    Item* getItem(const char* path) const override;
    /// The value goes out byte for byte, without any escaping.
    std::string marshall(const std::string& indent) override;
    std::string toString(const std::string& indent) override;
    /// Reads one line. Throws KFDictionaryParsingException, with the value unchanged, when the line
    /// is no "<string>" line.
    void unMarshall(std::stringstream& in) override;

    void setValue(const std::string& value);

private:
    std::string m_value;
};
