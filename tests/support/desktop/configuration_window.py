"""The configuration window of a running tool: its controls by their accessible names."""

import pathlib

import texts

TITLE = "TavConfiguration"
WITH_VPN = "WITH_VPN_RADIOBUTTON"
NO_VPN = "NO_VPN_RADIOBUTTON"
WITH_MONITORING = "MONITORING_ENABLE_RADIO_BUTTON"
NO_MONITORING = "MONITORING_DISABLE_RADIO_BUTTON"


class ConfigurationWindow:
    """Finds the controls by the texts of the localization file of `language` beside the tool."""

    def __init__(self, application, tool, language="en"):
        self.application = application
        self.texts = texts.load(
            pathlib.Path(tool).parent / f"Localizer_TavConfiguration_{language}.cfg")
        self.node = application.window(TITLE)

        start, stop = (self.texts[f"STATIC_VPN_{command}_LABEL"] for command in ("START", "STOP"))
        self.start_command = self._field(start, "STATIC_VPN_START_COMMAND_LINE")
        self.start_arguments = self._field(start, "STATIC_VPN_START_ARGS")
        self.stop_command = self._field(stop, "STATIC_VPN_STOP_COMMAND_LINE")
        self.stop_arguments = self._field(stop, "STATIC_VPN_STOP_ARGS")
        self.browse_start = self._button(f"{start}: {self.texts['BROWSE_BUTTON']}")
        self.browse_stop = self._button(f"{stop}: {self.texts['BROWSE_BUTTON']}")
        self.address = self.node.find("text", self.texts["MONITORING_IP_ADDRESS"])

    def fields(self):
        return [self.start_command, self.start_arguments, self.stop_command, self.stop_arguments,
                self.address]

    def choose_vpn(self):
        self.radio(WITH_VPN).press()

    def choose_no_vpn(self):
        self.radio(NO_VPN).press()

    def choose_monitoring(self):
        self.radio(WITH_MONITORING).press()

    def choose_no_monitoring(self):
        self.radio(NO_MONITORING).press()

    def chosen(self):
        """Those of the four radio buttons that are on."""
        return [key for key in (WITH_VPN, NO_VPN, WITH_MONITORING, NO_MONITORING)
                if self.radio(key).checked]

    def radio(self, key):
        return self.node.find("radio button", self.texts[key])

    def save(self):
        self._button(self.texts["SAVE_BUTTON"]).press()

    def cancel(self):
        self._button(self.texts["CANCEL_BUTTON"]).press()

    def alert(self):
        """The text of the alert that shows, once it does."""
        alert = self.application.window(self.texts["MSGOK_DLG_TITLE"])
        return next(node.name for node in alert.descendants() if node.role == "label")

    def dismiss_alert(self):
        alert = self.application.window(self.texts["MSGOK_DLG_TITLE"])
        next(node for node in alert.descendants() if node.role == "push button").press()

    def _field(self, group, key):
        return self.node.find("text", f"{group}: {self.texts[key]}")

    def _button(self, name):
        return self.node.find("push button", name)
