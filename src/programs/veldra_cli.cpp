#include "batch/command_line.h"
#include "os/process.h"

int main(int argc, char** argv) {
    veldra::prepare_process();
    return veldra::batch::run(argc, argv);
}
