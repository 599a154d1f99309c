#include "DisplayConnection.h"

#include <cstdlib>
#include <string>

/// Asks the window of a title to close, as the close button of a window manager does.
///
/// Arguments: the title. The display is that of DISPLAY.
namespace {

std::string titleOf(const DisplayConnection& display, xcb_window_t window)
{
    constexpr std::uint32_t MAX_WORDS = 64;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        display.server(),
        xcb_get_property(
            display.server(), 0, window, display.atom("_NET_WM_NAME"), XCB_ATOM_ANY, 0, MAX_WORDS),
        nullptr));
    if (reply == nullptr)
        return {};
    return {
        static_cast<const char*>(xcb_get_property_value(reply.get())),
        static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

void askToClose(const DisplayConnection& display, xcb_window_t window)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = display.atom("WM_PROTOCOLS");
    event.data.data32[0] = display.atom("WM_DELETE_WINDOW");
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(
        display.server(), 0, window, XCB_EVENT_MASK_NO_EVENT,
        reinterpret_cast<const char*>(&event));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return EXIT_FAILURE;
    const DisplayConnection display;
    const XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        display.server(), xcb_query_tree(display.server(), display.root()), nullptr));
    int result = EXIT_FAILURE;
    const xcb_window_t* const windows = xcb_query_tree_children(tree.get());
    for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index)
        if (titleOf(display, windows[index]) == argv[1]) {
            askToClose(display, windows[index]);
            result = EXIT_SUCCESS;
        }
    return result;
}
