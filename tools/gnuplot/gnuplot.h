// Pictures, drawn by gnuplot from a script in its language, as PNG or SVG files. gnuplot is started without a
// shell, reads the script from its standard input and writes the picture to its standard output, so a script
// contains no path.
#pragma once

#include <string>
#include <vector>

#include "host/output/output_file.h"

namespace se_output {

struct PictureSize {
    int width = 1000;  // pixels
    int height = 600;
};

// A picture that is complete or absent, as every output of the host.
class Picture {
  public:
    // Construct it before the work that it shows, so that errors are reported early.
    // fails: UsageError when `path` ends neither in .png nor in .svg; Failure without gnuplot, or when the
    // folder cannot be written.
    explicit Picture(const std::string& path);

    // Runs `script`, once, which sets titles and axes and plots. Terminal, encoding and output are set before it.
    // gnuplot's markup in texts is disabled. fails: Failure, with gnuplot's message.
    void draw(const std::string& script, PictureSize size = {});

    // Gives the file its name. needs: draw. fails: Failure.
    void commit() { file_.commit(); }

    const std::string& path() const { return file_.path(); }

  private:
    std::string ending_;
    OutputFile file_;
};

// An SVG element to stand in a page: transparent, as wide as its place, black where the page's own colour should be, and
// with `name` in front of its identifiers. Runs `script` as Picture does. fails: Failure.
std::string svgElement(const std::string& name, const std::string& script, PictureSize size);

// The bytes of a PNG picture. fails: Failure.
std::string pngBytes(const std::string& name, const std::string& script, PictureSize size);

// Pieces of scripts.

// `text` as a string of gnuplot's language.
std::string plotText(const std::string& text);

// The last part of a path: pictures have no room for more.
std::string fileName(const std::string& path);

// A data block `$name` of these rows, one line each; what is not finite becomes "NaN", which is left out of
// lines and grids.
std::string plotData(const std::string& name, const std::vector<std::vector<double>>& rows);

}  // namespace se_output
