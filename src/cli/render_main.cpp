// tavilo-render: the converter with the picture renderer linked in, which
// tavilo-convert runs for --plot and --print.
#include <iostream>
#include <string>
#include <vector>

#include "cli/converter.h"
#include "plotqt/page_render.h"
#include "plotqt/render.h"

int main(int argc, char** argv) {
  const tavilo::Renderer renderer{tavilo::RenderPlotsToFile, tavilo::WritePagePdf};
  std::vector<std::string> args(argv + 1, argv + argc);
  return tavilo::RunConverter(args, std::cout, std::cerr, &renderer);
}
