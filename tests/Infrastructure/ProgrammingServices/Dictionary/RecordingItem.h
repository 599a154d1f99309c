#pragma once

#include "Item.h"

#include <memory>
#include <sstream>
#include <string>

/// A leaf with nothing but the answers of Item, which records what its dictionary does with it.
///
/// Its clones write to the same record.
class RecordingItem : public Item {
public:
    struct Record {
        int cloned = 0;
        int destroyed = 0;
        int described = 0;
        /// Makes every clone() answer NULL.
        bool cloneFails = false;
    };

    explicit RecordingItem(Record& record, std::string name = "recording")
        : Item(std::move(name)), m_record(record)
    {
    }
    RecordingItem(const RecordingItem&) = default;
    RecordingItem& operator=(const RecordingItem&) = delete;
    ~RecordingItem() override { ++m_record.destroyed; }

    bool equals(const Item& other) override { return this == &other; }
    Item* clone() override
    {
        ++m_record.cloned;
        return m_record.cloneFails ? nullptr : std::make_unique<RecordingItem>(*this).release();
    }
    Item* getItem(const std::string& /*path*/) const override { return nullptr; }
    Item* getItem(const char* /*path*/) const override { return nullptr; }
    std::string marshall(const std::string& indent) override { return indent + "<recording>\n"; }
    std::string toString(const std::string& indent) override
    {
        ++m_record.described;
        return indent + "recording\n";
    }
    void unMarshall(std::stringstream& /*in*/) override {}

private:
    Record& m_record;
};
