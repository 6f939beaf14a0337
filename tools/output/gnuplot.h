// Pictures, drawn by gnuplot: a script in its language goes in, a PNG or SVG file comes out. gnuplot is started
// without a shell, reads the script from its standard input and writes the picture to its standard output, so
// that no path is ever part of a script.
#pragma once

#include <string>
#include <vector>

#include "tools/output/temporary_file.h"

namespace se_output {

struct PictureSize {
    int width = 1000;  // pixels
    int height = 600;
};

// A picture that appears complete or not at all, as every output of the host.
class Picture {
  public:
    // Make it before the work that it shows, so that what is wrong with it is known early.
    // fails: UsageError when `path` ends neither in .png nor in .svg; Failure without gnuplot, or when the
    // folder cannot be written.
    explicit Picture(const std::string& path);

    // Lets gnuplot run `script`, which finds terminal, encoding and output set up: it sets titles and axes and
    // plots. Text is taken as it stands, without gnuplot's markup. fails: Failure, with gnuplot's words.
    void draw(const std::string& script, PictureSize size = {});

    // Gives the file its name. needs: draw. fails: Failure.
    void commit() { file_.commit(); }

    const std::string& path() const { return file_.path(); }

  private:
    std::string ending_;
    TemporaryFile file_;
};

// Pieces of scripts.

// `text` as a string of gnuplot's language.
std::string plotText(const std::string& text);

// The last part of a path: pictures have no room for more.
std::string fileName(const std::string& path);

// A data block `$name` of these rows, one line each; what is not finite becomes "NaN", which is left out of
// lines and grids.
std::string plotData(const std::string& name, const std::vector<std::vector<double>>& rows);

}  // namespace se_output
