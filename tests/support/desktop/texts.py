"""The window's texts by key, read from a localization file."""


def load(path):
    texts = {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            key, separator, text = line.strip().partition("=")
            if separator:
                texts[key] = text.replace("\\n", "\n")
    return texts
