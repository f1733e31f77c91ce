#include "tools/vor2/command_line.h"
#include "tools/vor2/system.h"

int main(int argument_count, char** arguments) {
    tool::prepare_process();
    return tool::run_command_line(argument_count, arguments);
}
