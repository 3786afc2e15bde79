#pragma once

#include <map>
#include <optional>
#include <string>

/// The tool's command line: `name=value` pairs in any order.
///
///     demo-install-tool command=install pid=... agentId=... targetDir=/opt/agent
///     configTemplateUrl=http://...
///         installerUrl=http://... reportUrl=http://...
///     demo-install-tool command=uninstall pid=... agentId=... targetDir=... reportUrl=...
///     demo-install-tool command=print_installed_product_info agentId=... targetDir=...
///         "print_info_prefix=Install info {{" print_info_suffix=}
///
/// Of a repeated name the last value counts; an argument without "=" is ignored.
class Arguments {
public:
    Arguments(int argc, char** argv);

    std::optional<std::string> find(const std::string& name) const;
    /// The value; raises std::runtime_error naming the missing argument.
    std::string get(const std::string& name) const;

private:
    std::map<std::string, std::string> values;
};
