#include "tools/vor2/cli/command_line.h"
#include "tools/vor2/cli/system.h"

int main(int argument_count, char** arguments) {
    tool::prepare_process();
    return tool::run_command_line(argument_count, arguments);
}
