// A disk without room, as far as this process can tell: files can be made and named, but take no byte.
#pragma once

#include <sys/resource.h>

#include <csignal>
#include <stdexcept>

namespace lirovan::test {

class FullDisk {
  public:
    explicit FullDisk(rlim_t room = 0) {
        std::signal(SIGXFSZ, SIG_IGN);  // an error, as on a full disk, and not the end of the program
        if (getrlimit(RLIMIT_FSIZE, &before_) != 0) throw std::runtime_error("cannot ask for the limit");
        const rlimit full{room, before_.rlim_max};
        if (setrlimit(RLIMIT_FSIZE, &full) != 0) throw std::runtime_error("cannot set the limit");
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    rlimit before_{};
};

}  // namespace lirovan::test
