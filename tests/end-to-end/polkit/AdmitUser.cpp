#include "VirtualDisplay.h"

/// Has the X server of DISPLAY admit a user of this machine by name, without a cookie.
///
/// Arguments: the name of the user.
int main(int argc, char** argv)
{
    if (argc != 2)
        return 1;
    VirtualDisplay::admit(argv[1]);
    return 0;
}
