#include "dav/DavProgram.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {

// The reader's library tells of each oddity of a file on the standard error output, where the user looks for what this
// program has to say. Gives the place where the latter goes on.
int KeepErrorsToOurselves()
{
    const int own = dup(STDERR_FILENO);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (own >= 0 && nowhere >= 0)
        dup2(nowhere, STDERR_FILENO);
    return own;
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QFile output;
    QFile errors;
    if (!output.open(stdout, QIODevice::WriteOnly) ||
        !errors.open(KeepErrorsToOurselves(), QIODevice::WriteOnly | QIODevice::Unbuffered))
        return fenrik::DavProgram::kUnwritable;
    const int code = fenrik::DavProgram(output, errors).Run(fenrik::CommandLine::Parse(QCoreApplication::arguments()));
    if (output.flush() && std::fflush(stdout) == 0 && output.error() == QFileDevice::NoError)
        return code;
    errors.write("fenrik-dav: the output can't be written\n");
    return code == fenrik::DavProgram::kGood ? fenrik::DavProgram::kUnwritable : code;
}
