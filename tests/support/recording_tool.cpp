// Beside itself, at its own path with an ending, the tool leaves the variables (.environment) and then the
// arguments (.arguments) that it was started with, each in brackets; it prints what its .output file holds.

#include <filesystem>
#include <fstream>
#include <iostream>

extern char** environ;

static void record(const std::string& file, char** texts) {
    std::ofstream stream(file + ".part", std::ios::binary);
    for (; *texts; ++texts)
        stream << '[' << *texts << ']';
    stream.close();
    std::filesystem::rename(file + ".part", file);
}

int main(int, char* argv[]) {
    const std::string self = argv[0];
    record(self + ".environment", environ);
    record(self + ".arguments", argv);
    if (std::ifstream output(self + ".output", std::ios::binary); output)
        std::cout << output.rdbuf();
}
