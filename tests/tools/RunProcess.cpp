#include "RunProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace locmgr::testing {

namespace {

struct Pipe {
    int read = -1;
    int write = -1;
};

Pipe MakePipe() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        throw std::runtime_error("pipe failed");
    }
    return {ends[0], ends[1]};
}

void CloseIfOpen(int& descriptor) {
    if (descriptor >= 0) {
        ::close(descriptor);
        descriptor = -1;
    }
}

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& argv, const std::string& input) {
    // A child that exits before reading all its input must not kill the test with SIGPIPE.
    std::signal(SIGPIPE, SIG_IGN);
    Pipe in = MakePipe();
    Pipe out = MakePipe();
    Pipe err = MakePipe();

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in.read, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out.write, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.write, STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& argument : argv) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    pid_t child = -1;
    const int spawned =
        ::posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    CloseIfOpen(in.read);
    CloseIfOpen(out.write);
    CloseIfOpen(err.write);
    if (spawned != 0) {
        CloseIfOpen(in.write);
        CloseIfOpen(out.read);
        CloseIfOpen(err.read);
        throw std::runtime_error("cannot start " + argv[0]);
    }

    ProcessResult result;
    std::size_t written = 0;
    if (input.empty()) {
        CloseIfOpen(in.write);
    }
    while (out.read >= 0 || err.read >= 0) {
        std::array<pollfd, 3> watched{
            {{out.read, POLLIN, 0}, {err.read, POLLIN, 0}, {in.write, POLLOUT, 0}}};
        if (::poll(watched.data(), watched.size(), -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            break;
        }
        if (watched[2].revents != 0) {
            // POLLOUT promises room for PIPE_BUF bytes only: a longer write would block while
            // the child, its output unread, blocks too.
            const ssize_t count = ::write(in.write, input.data() + written,
                                          std::min<std::size_t>(input.size() - written, PIPE_BUF));
            if (count > 0) {
                written += static_cast<std::size_t>(count);
            }
            if (count < 0 || written == input.size()) {
                CloseIfOpen(in.write);
            }
        }
        std::pair<int*, std::string*> readers[] = {{&out.read, &result.out},
                                                   {&err.read, &result.err}};
        for (std::size_t index = 0; index < 2; ++index) {
            if (watched[index].revents == 0) {
                continue;
            }
            char buffer[4096];
            const ssize_t count = ::read(*readers[index].first, buffer, sizeof buffer);
            if (count > 0) {
                readers[index].second->append(buffer, static_cast<std::size_t>(count));
            } else if (count == 0 || errno != EINTR) {
                CloseIfOpen(*readers[index].first);
            }
        }
    }
    CloseIfOpen(in.write);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

}  // namespace locmgr::testing
