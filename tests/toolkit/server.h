/** @file
 *  Real servers on the loopback address, each with a port and a folder of its own, stopped on the way out.
 */
#pragma once

#include "tests/toolkit/workshop.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace toolkit_test {

class Server {
public:
    /** Serves the files of @p workshop over HTTP. */
    static Server web(const Workshop& workshop);
    /** Serves @p ldif below "c=KR". */
    static Server directory(const Workshop& workshop, const std::string& ldif);

    ~Server();
    Server(Server&& other) noexcept;
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    int port() const { return m_port; }

private:
    /** Starts a program in the folder and waits until its port answers. */
    Server(const Workshop& workshop, const std::vector<std::string>& command, int port);

    pid_t m_process;
    int m_port;
};

} // namespace toolkit_test
