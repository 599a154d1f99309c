#pragma once

#include "Dictionary.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

/// A text of a section, under one key.
template<class Section>
struct TextAccessor {
    const char* key;
    std::string (Section::*get)() const;
    void (Section::*set)(const std::string&);

    friend std::ostream& operator<<(std::ostream& out, const TextAccessor& accessor)
    {
        return out << accessor.key;
    }
};

/// What holds for each text of a section that starts empty.
template<class Section>
class TextAccessorTest : public testing::TestWithParam<TextAccessor<Section>> {
protected:
    std::string text() const { return (m_section.*this->GetParam().get)(); }
    void setText(const std::string& value) { (m_section.*this->GetParam().set)(value); }

    void expectEmptyWhenMissing() const { EXPECT_EQ(text(), ""); }

    void expectSetterToCreateKeyThenReplaceItsValue()
    {
        Dictionary& held = m_section;

        setText("first");
        const Item* const entry = held.getFirstItem();
        setText("second");

        EXPECT_EQ(text(), "second");
        EXPECT_STREQ(held.getValue(this->GetParam().key), "second");
        EXPECT_EQ(held.getFirstItem(), entry);
        held.removeItem(this->GetParam().key);
        EXPECT_EQ(held.getFirstItem(), nullptr);
    }

private:
    Dictionary m_empty{"Section"};
    Section m_section{&m_empty};
};
