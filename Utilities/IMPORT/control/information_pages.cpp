#include "control/information_pages.h"

#include "control/fixed_text.h"
#include "control/host_link.h"

// The build identification. Quotes, so that the folder of this include stays off the system include
// path, where it would shadow the standard header of that name on some disks.
#include "Version"

#include <string_view>

namespace kova_import {

namespace {

void send_row(std::string_view label, std::string_view value) {
    send<"PINFOHTML">("</td></tr><tr style=\"font-weight: bold;\" align=\"Left\"><td>");
    send<"PINFOHTML">(page_line<30>(label, value));
}

} // namespace

void send_intro() {
    send<"PCLEARINFO">();
    send_version_page();
}

void send_version_page() {
    send<"PINFOHTML">(
        "<center><body><table style=\"text-align: left; width: 332px; height: 284px;\"");
    send<"PINFOHTML">("border=\"1\" cellpadding=\"2\" cellspacing=\"2\"><tbody>");
    send<"PINFOHTML">("<tr style=\"font-weight: bold; color: white;\"align=\"center\">");
    send<"PINFOHTML">("<td style=\"background-color: blue;\">");
    send<"PINFOHTML">("KOVA Import Utility Version Information</td></tr>");
    send<"PINFOHTML">("<tr style=\"font-weight: bold;\" align=\"Left\"><td>");
    send<"PINFOHTML">(page_line<30>("ORVEN -- KOVA Version 8.4.3", ""));
    send_row("Model sha: ", build_identification::model_revision);
    send<"PINFOHTML">("</td></tr>");
    send<"PINFOHTML">("<tr style=\"font-weight: bold;\" align=\"Left\"><td>");
    send<"PINFOHTML">(page_line<50>("Built on: ", build_identification::build_time));
    send_row("Model branch: ", build_identification::model_branch);
    send_row("Gui sha: ", build_identification::interface_revision);
    send_row("Gui branch: ", build_identification::interface_branch);
    send_row("Platform: ", build_identification::platform);
    send_row("Architecture: ", build_identification::architecture);
    send_row("Build type: ", build_identification::build_type);
    send<"PINFOHTML">("</td></tr></tbody></table><br></body></Center>");
}

} // namespace kova_import
