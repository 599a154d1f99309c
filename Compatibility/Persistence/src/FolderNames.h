#pragma once

/// Names of the product's folders under the two application data folders.
inline constexpr const char* FOLDERNAME_PELORA = "Pelora";
inline constexpr const char* FOLDERNAME_VANTEO = "Vanteo";
inline constexpr const char* FOLDERNAME_DOWNLOADS = "Downloads";
