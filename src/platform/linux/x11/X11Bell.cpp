#include "platform/linux/x11/X11Bell.h"

namespace nettlecap {

void X11Bell::ring() {
    xcb_bell(connection_.xcb(), 0);  // as loud as the user has set it
    connection_.flush();
}

}  // namespace nettlecap
