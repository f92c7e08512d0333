#include "batch/command_line.h"

int main(int argc, char** argv) {
    return veldra::batch::run(argc, argv);
}
