// The configuration file beside the program.
#include "shell/frmTandrel.h"

void frmTandrel::readInConfigFile()
{
    // Reading Tandrel.cfg arrives with the configuration dialog; until then
    // every run starts with the start-up settings.
}
