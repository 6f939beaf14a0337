#include "kernel_check/program/program.h"

#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

namespace program {
namespace {

int complain(const std::string& name, const std::string& text, ExitCode code) {
    std::cerr << name << ": " << text << std::endl;
    return code;
}

int complainOfUsage(const std::string& name, const std::string& text) {
    return complain(name, text + "; see '" + name + " --help'", kWrongUsage);
}

}  // namespace

int run(CLI::App& app, int argc, char** argv, const std::function<int()>& work) {
    try {
        app.parse(argc, argv);
        return work();
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        return complainOfUsage(app.get_name(), error.what());
    } catch (const std::invalid_argument& error) {
        return complainOfUsage(app.get_name(), error.what());
    } catch (const std::exception& error) {
        return complain(app.get_name(), error.what(), kFailure);
    }
}

}  // namespace program
