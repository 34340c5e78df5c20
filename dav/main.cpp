#include "dav/DavProgram.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QFile output;
    QFile errors;
    if (!output.open(stdout, QIODevice::WriteOnly) ||
        !errors.open(stderr, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return fenrik::DavProgram::kUnwritable;
    const int code = fenrik::DavProgram(output, errors).Run(fenrik::CommandLine::Parse(QCoreApplication::arguments()));
    if (output.flush() && std::fflush(stdout) == 0 && output.error() == QFileDevice::NoError)
        return code;
    errors.write("fenrik-dav: the output can't be written\n");
    return code == fenrik::DavProgram::kGood ? fenrik::DavProgram::kUnwritable : code;
}
