#include "VirtualDisplay.h"

#include "DisplayConnection.h"

#include <csignal>
#include <cstdint>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

namespace {

Pipe openPipe()
{
    Pipe pipe;
    if (pipe.open() != 0)
        throw std::runtime_error("there is no pipe for the virtual display");
    return pipe;
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

void addToAccessList(std::uint8_t family, const std::string& address)
{
    const DisplayConnection display;
    xcb_change_hosts(
        display.server(), XCB_HOST_MODE_INSERT, family, static_cast<std::uint16_t>(address.size()),
        reinterpret_cast<const std::uint8_t*>(address.data()));
}

} // namespace

VirtualDisplay::VirtualDisplay(const std::vector<std::string>& options)
    : VirtualDisplay(options, openPipe())
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
    addToAccessList(XCB_FAMILY_SERVER_INTERPRETED, std::string("localuser") + '\0' + user);
}

void VirtualDisplay::admitLocalUsers()
{
    constexpr std::uint8_t FAMILY_LOCAL_HOST = 252;
    addToAccessList(FAMILY_LOCAL_HOST, "");
}

void VirtualDisplay::setRootProperty(const std::string& name, const std::string& value)
{
    const DisplayConnection display;
    xcb_change_property(
        display.server(), XCB_PROP_MODE_REPLACE, display.root(), display.atom(name),
        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(value.size()), value.data());
}
