#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

/// A Modbus TCP device with 100 points a table on a loopback port, and what can go wrong with one.
class ModbusTestServer
{
public:
    enum Fault { None, Silent, Late, Garbage, OtherTransaction, Truncated, HangUp };
    static constexpr int size = 100;

    ModbusTestServer() { listen(0); }
    ~ModbusTestServer() { unplug(); }

    int port() const { return m_port; }
    /// Closes the port and every connection; plug() opens the same port again.
    void unplug()
    {
        m_isStopping = true;
        m_thread.join();
        ::close(m_listener);
    }
    void plug() { listen(m_port); }

    std::atomic<int> fault{None};
    std::atomic<int> lateMs{0};
    std::atomic<int> refusedFrom{size}; ///< reading from this address gives exception 2
    std::atomic<int> silentAt{-1};      ///< reading from this address has no answer
    std::atomic<bool> refusesWrites{false};
    std::atomic<int> requests{0};
    std::atomic<int> lastWriteFunction{0};
    std::array<std::atomic<std::uint16_t>, size> words{}; ///< both register tables
    std::array<std::atomic<bool>, size> bits{};           ///< both bit tables

private:
    using Bytes = std::vector<std::uint8_t>;

    void listen(int port)
    {
        m_isStopping = false;
        m_listener = ::socket(AF_INET, SOCK_STREAM, 0);
        const int on = 1;
        ::setsockopt(m_listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(std::uint16_t(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        auto *generic = reinterpret_cast<sockaddr *>(&address);
        if (::bind(m_listener, generic, length) != 0 || ::listen(m_listener, 8) != 0)
            throw std::runtime_error("no loopback port");
        ::getsockname(m_listener, generic, &length);
        m_port = ntohs(address.sin_port);
        m_thread = std::thread([this] { run(); });
    }
    bool isReadable(int socket) const
    {
        pollfd watched{socket, POLLIN, 0};
        while (!m_isStopping) {
            if (::poll(&watched, 1, 10) > 0)
                return true;
        }
        return false;
    }
    void run()
    {
        while (isReadable(m_listener)) {
            const int client = ::accept(m_listener, nullptr, nullptr);
            while (isReadable(client) && serve(client)) {
            }
            ::close(client);
        }
    }
    bool serve(int client)
    {
        Bytes request(260);
        const auto count = ::recv(client, request.data(), request.size(), 0);
        if (count < 12)
            return false;
        ++requests;
        if (request[7] <= 4 && word(request, 8) == silentAt)
            return true;
        Bytes answer(request.begin(), request.begin() + 7);
        const Bytes body = answerTo(request);
        answer.insert(answer.end(), body.begin(), body.end());
        answer[4] = 0;
        answer[5] = std::uint8_t(body.size() + 1);
        return send(client, std::move(answer));
    }
    bool send(int client, Bytes answer)
    {
        const int now = fault;
        if (now == Silent)
            return true;
        if (now == HangUp)
            return false;
        if (now == Late)
            std::this_thread::sleep_for(std::chrono::milliseconds(lateMs));
        if (now == Garbage)
            std::fill(answer.begin(), answer.end(), 0xa5);
        if (now == OtherTransaction)
            answer[1] ^= 0xff;
        if (now == Truncated)
            answer.resize(answer.size() - 1);
        return ::send(client, answer.data(), answer.size(), MSG_NOSIGNAL) == int(answer.size());
    }
    static int word(const Bytes &bytes, int at) { return bytes[at] << 8 | bytes[at + 1]; }
    Bytes answerTo(const Bytes &request)
    {
        const int function = request[7];
        const int address = word(request, 8);
        const int second = word(request, 10);
        const bool isWrite = function == 5 || function == 6 || function >= 15;
        const int count = function == 5 || function == 6 ? 1 : second;
        const int limit = isWrite ? size : refusedFrom.load();
        if (address + count > limit || (isWrite && refusesWrites))
            return {std::uint8_t(function | 0x80), std::uint8_t(isWrite ? 4 : 2)};
        if (isWrite) {
            lastWriteFunction = function;
            write(function, address, second, request);
            return Bytes(request.begin() + 7, request.begin() + 12);
        }
        return function <= 2 ? readBits(function, address, count)
                             : readWords(function, address, count);
    }
    Bytes readBits(int function, int address, int count) const
    {
        Bytes body{std::uint8_t(function), std::uint8_t((count + 7) / 8)};
        body.resize(2 + body[1]);
        for (int i = 0; i < count; ++i)
            body[2 + i / 8] |= std::uint8_t(bits[address + i] << i % 8);
        return body;
    }
    Bytes readWords(int function, int address, int count) const
    {
        Bytes body{std::uint8_t(function), std::uint8_t(count * 2)};
        for (int i = 0; i < count; ++i) {
            body.push_back(std::uint8_t(words[address + i] >> 8));
            body.push_back(std::uint8_t(words[address + i]));
        }
        return body;
    }
    void write(int function, int address, int second, const Bytes &request)
    {
        if (function == 5)
            bits[address] = second == 0xff00;
        else if (function == 6)
            words[address] = std::uint16_t(second);
        for (int i = 0; i < second && function == 15; ++i)
            bits[address + i] = request[13 + i / 8] >> i % 8 & 1;
        for (int i = 0; i < second && function == 16; ++i)
            words[address + i] = std::uint16_t(word(request, 13 + 2 * i));
    }

    std::atomic<bool> m_isStopping{false};
    int m_listener = -1;
    int m_port = 0;
    std::thread m_thread;
};
