#pragma once

namespace Ui {
class TavConfigurationWindow;
}

/// The localized texts of the configuration window, shown to the letter: neither "&" nor markup
/// means anything in them.
class WindowTexts {
public:
    /// Replaces the key that the Designer file has put into each control by the key's text, and
    /// gives every control its accessible name and its mnemonic.
    static void show(Ui::TavConfigurationWindow& window);
};
