#include "nodes/actions/kinds/actionLaunchProcess.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/system/systemCore.h"

#include <sstream>

namespace Nodes {

namespace {

Result expand(const systemCore *core, std::string &text)
{
    return core ? core->Expand(text, text) : Result();
}

} // namespace

KindInfo actionLaunchProcess::Kind()
{
    return KindBuilder::For<actionLaunchProcess>("actionLaunchProcess", "Launch process",
                                                 "Запуск программы")
        .Property<&actionLaunchProcess::m_program>(Prop::Program, "Program", "Программа")
        .Hint("defines")
        .Property<&actionLaunchProcess::m_arguments>(Prop::Arguments, "Arguments, one a line",
                                                     "Аргументы, по одному в строке")
        .Hint("defineLines")
        .Property<&actionLaunchProcess::m_directory>(Prop::Directory, "Working directory",
                                                     "Рабочий каталог")
        .Hint("defines");
}

Result actionLaunchProcess::Prepare(Command &command) const
{
    if (const Result access = DemandAccess(PrivilegeLaunch, *this, "запуск «" + m_program + "»");
        !access)
        return access;
    if (m_program.empty())
        return Result(this, Result::InvalidArgument, "program");
    const systemCore *core = GetCore();
    Command prepared{m_program, {}, m_directory};
    std::istringstream lines(m_arguments);
    for (std::string line; std::getline(lines, line);)
        prepared.arguments.push_back(line);
    std::vector<std::string *> texts{&prepared.program, &prepared.directory};
    for (std::string &argument : prepared.arguments)
        texts.push_back(&argument);
    for (std::string *text : texts) {
        if (const Result expanded = expand(core, *text); !expanded)
            return expanded;
    }
    if (prepared.directory.empty() && core)
        prepared.directory = core->GetProjectPath();
    command = std::move(prepared);
    return Result();
}

void actionLaunchProcess::CollectDemands(AccessDemands &demands) const
{
    demands.push_back({PrivilegeLaunch, GetNodeLink()});
}

} // namespace Nodes
