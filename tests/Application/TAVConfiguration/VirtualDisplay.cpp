#include "VirtualDisplay.h"

#include "Pipe.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string_view>

#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
struct Free {
    void operator()(void* reply) const
    {
        std::free(reply); // NOLINT(cppcoreguidelines-no-malloc): xcb allocates its replies so
    }
};
template<typename T>
using Reply = std::unique_ptr<T, Free>;
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

Connection connect()
{
    Connection connection(xcb_connect(nullptr, nullptr));
    if (xcb_connection_has_error(connection.get()) != 0)
        throw std::runtime_error("the virtual display cannot be opened");
    return connection;
}

/// Waits until the server has done what it was asked for.
void finish(const Connection& connection)
{
    const Reply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        connection.get(), xcb_get_input_focus(connection.get()), nullptr));
}

[[noreturn]] void becomeServer(const std::vector<std::string>& options, int readyDescriptor)
{
    const int duplicate = dup(readyDescriptor);
    std::vector<std::string> words{"Xvfb", "-displayfd", std::to_string(duplicate)};
    words.insert(words.end(), {"-nolisten", "tcp", "-noreset"});
    words.insert(words.end(), options.begin(), options.end());
    std::vector<char*> command;
    command.reserve(words.size() + 1);
    for (std::string& word : words)
        command.push_back(word.data());
    command.push_back(nullptr);
    execvp(command.front(), command.data());
    _exit(1);
}

pid_t startServer(const std::vector<std::string>& options, int readyDescriptor)
{
    const pid_t server = fork();
    if (server == 0)
        becomeServer(options, readyDescriptor);
    return server;
}

std::string readLine(int descriptor)
{
    std::string line;
    char character = 0;
    while (read(descriptor, &character, 1) == 1 && character != '\n')
        line += character;
    return line;
}

void appendField(std::string& file, std::string_view field)
{
    file += static_cast<char>(field.size() / 256);
    file += static_cast<char>(field.size() % 256);
    file += field;
}

} // namespace

VirtualDisplay::VirtualDisplay(const std::vector<std::string>& options)
    : VirtualDisplay(options, Pipe::open().value())
{
}

VirtualDisplay::VirtualDisplay(const std::vector<std::string>& options, Pipe ready)
    : m_server(startServer(options, ready.writeEnd.get()))
{
    close(ready.writeEnd.release());
    const std::string number = readLine(ready.readEnd.get());
    if (number.empty())
        throw std::runtime_error("the virtual display did not start");
    m_name = ":" + number;
}

VirtualDisplay::~VirtualDisplay()
{
    kill(m_server, SIGTERM);
    waitpid(m_server, nullptr, 0);
}

void VirtualDisplay::admit(const std::string& user)
{
    const Connection connection = connect();
    const std::string address = std::string("localuser") + '\0' + user;
    xcb_change_hosts(
        connection.get(), XCB_HOST_MODE_INSERT, XCB_FAMILY_SERVER_INTERPRETED,
        static_cast<std::uint16_t>(address.size()),
        reinterpret_cast<const std::uint8_t*>(address.data()));
    finish(connection);
}

void VirtualDisplay::setRootProperty(const std::string& name, const std::string& value)
{
    const Connection connection = connect();
    xcb_connection_t* const server = connection.get();
    const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    xcb_change_property(
        server, XCB_PROP_MODE_REPLACE, xcb_setup_roots_iterator(xcb_get_setup(server)).data->root,
        atom->atom, XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(value.size()), value.data());
    finish(connection);
}

std::string cookieFile(const std::string& displayNumber)
{
    constexpr int ANY_ADDRESS = 65535;
    std::string file;
    file += static_cast<char>(ANY_ADDRESS / 256);
    file += static_cast<char>(ANY_ADDRESS % 256);
    appendField(file, "");
    appendField(file, displayNumber);
    appendField(file, "MIT-MAGIC-COOKIE-1");
    appendField(file, "sixteen bytes so");
    return file;
}
