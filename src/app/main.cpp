#include "app/AppDelegate.h"

int main(int argc, char* argv[]) {
    return vok::ApplicationMain(argc, argv, [](const vok::Platform& platform) {
        return std::make_unique<vok::AppDelegate>(platform);
    });
}
