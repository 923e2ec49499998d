#include "platform/linux/x11/X11Application.h"

namespace nettlecap {

void X11Application::beep() {
    xcb_bell(connection_.xcb(), 0);  // as loud as the user has set it
    connection_.flush();
}

}  // namespace nettlecap
