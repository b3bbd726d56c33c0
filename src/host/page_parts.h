// The style and the script of the HTML page, built in from page/.
#ifndef TALLY_HOST_PAGE_PARTS_H_
#define TALLY_HOST_PAGE_PARTS_H_

#include <string_view>

struct SPagePart {
  std::string_view text;  ///< what stands between the element's tags, to the byte
  std::string_view hash;  ///< of the text, as a Content-Security-Policy names it: SHA-256, base64
};

extern const SPagePart kPageStyle;
extern const SPagePart kPageScript;

#endif  // TALLY_HOST_PAGE_PARTS_H_
