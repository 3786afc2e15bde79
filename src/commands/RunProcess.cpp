#include "commands/RunProcess.h"

#include <cstdlib>
#include <unistd.h>

namespace vok {

void RunProcess(const char* path) {
    if (fork() != 0)
        return;
    char* const arguments[] = {const_cast<char*>(path), nullptr};
    char* const environment[] = {nullptr};
    execve(path, arguments, environment);
    std::exit(0);
}

}  // namespace vok
