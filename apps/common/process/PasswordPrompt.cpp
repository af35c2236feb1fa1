#include "apps/common/process/PasswordPrompt.h"

#include "apps/common/process/ProgramName.h"

#include "nodes/auth/systemAuthentication.h"

#include <iostream>
#include <string>

#include <termios.h>
#include <unistd.h>

namespace Host {

namespace {

/// Keeps a terminal from showing what is typed.
class HiddenInput
{
public:
    HiddenInput() : m_isTerminal(tcgetattr(STDIN_FILENO, &m_settings) == 0)
    {
        if (!m_isTerminal)
            return;
        std::cerr << "Password: ";
        termios hidden = m_settings;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSANOW, &hidden);
    }
    ~HiddenInput()
    {
        if (!m_isTerminal)
            return;
        tcsetattr(STDIN_FILENO, TCSANOW, &m_settings);
        std::cerr << '\n';
    }
    HiddenInput(const HiddenInput &) = delete;
    HiddenInput &operator=(const HiddenInput &) = delete;

private:
    termios m_settings{};
    bool m_isTerminal;
};

std::string readLine()
{
    const HiddenInput hidden;
    std::string line;
    std::getline(std::cin, line);
    return line;
}

} // namespace

bool printPasswordHash()
{
    const std::string password = readLine();
    if (password.empty()) {
        std::cerr << ProgramName() << ": the password is empty; give one line on standard input\n";
        return false;
    }
    const std::string hash = Nodes::systemAuthentication::HashPassword(password);
    if (hash.empty()) {
        std::cerr << ProgramName()
                  << ": not enough memory to hash the password; free 64 MB and try again\n";
        return false;
    }
    std::cout << hash << std::endl;
    return true;
}

} // namespace Host
