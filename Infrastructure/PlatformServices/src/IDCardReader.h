#pragma once

#include <map>
#include <string>
#include <string_view>

/// The product identity card: the text file "ID.txt" with one KEY=VALUE entry a line, which names
/// the product, its versions, its build target and its upgrade code.
///
/// A card that cannot be read, or that holds an "&", is told by readIDCard() alone; no exception
/// leaves the reader: what there is no memory for is absent. Used by one thread.
class IDCardReader {
public:
    /// `directory` holds the card and ends with the separator. Nothing is read yet.
    explicit IDCardReader(std::string directory);
    virtual ~IDCardReader();

    IDCardReader(const IDCardReader&) = delete;
    IDCardReader& operator=(const IDCardReader&) = delete;

    /// True when at least one entry was stored and no forbidden character was met. An "&" ends the
    /// reading at its line and makes the result false; entries stored before it stay.
    bool readIDCard();

    /// The value of the key; an absent one is empty.
    std::string getParam(const std::string& key) const;
    std::map<std::string, std::string> getIDCardParams() const;

    std::string getFleetID() const;
    std::string getCustomerID() const;
    std::string getGenerationVersion() const;
    std::string getTAVAdministrationTool() const;
    std::string getBUName() const;
    std::string getReferenceVersion() const;
    std::string getProductName() const;
    std::string getBuildTarget() const;
    std::string getCommercialVersion() const;
    std::string getProductVersion() const;
    std::string getUpgradeCode() const;

private:
    std::string getKnownParam(const char* key) const;
    bool storeEntry(std::string_view line);

    std::string m_directory;
    std::map<std::string, std::string> m_parameters;
};
