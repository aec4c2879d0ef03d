#include "platform/qt/qt_processes.h"

#include <QProcess>

namespace varnhold::platform {

namespace {

constexpr int withoutLimit = -1; // the default would give up after 30 seconds

QString toQt(const std::string& text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void prepare(QProcess& process, const ProcessRequest& request) {
    process.setProgram(toQt(request.program));
    QStringList arguments;
    for (const std::string& argument : request.arguments) {
        arguments.append(toQt(argument));
    }
    process.setArguments(arguments);
    if (request.environment) {
        QProcessEnvironment environment;
        for (const auto& [name, value] : *request.environment) {
            environment.insert(toQt(name), toQt(value));
        }
        process.setProcessEnvironment(environment);
    }
    process.setStandardInputFile(QProcess::nullDevice());
    if (request.standardOutput == Stream::discarded) {
        process.setStandardOutputFile(QProcess::nullDevice());
    }
    if (request.standardError == Stream::discarded) {
        process.setStandardErrorFile(QProcess::nullDevice());
    }
}

QProcess::ProcessChannelMode channelMode(const ProcessRequest& request) {
    const bool outputInherited = request.standardOutput == Stream::inherited;
    const bool errorInherited = request.standardError == Stream::inherited;
    if (outputInherited && errorInherited) {
        return QProcess::ForwardedChannels;
    }
    if (outputInherited) {
        return QProcess::ForwardedOutputChannel;
    }
    return errorInherited ? QProcess::ForwardedErrorChannel : QProcess::SeparateChannels;
}

} // namespace

ProcessResult QtProcesses::run(const ProcessRequest& request) {
    QProcess process;
    prepare(process, request);
    process.setProcessChannelMode(channelMode(request));
    process.start();
    ProcessResult result;
    if (!process.waitForStarted(withoutLimit)) {
        result.startError = process.errorString().toStdString();
        return result;
    }
    // QProcess drains the pipes while it waits, so a child that prints much can't block itself.
    process.waitForFinished(withoutLimit);
    result.started = true;
    result.signalled = process.exitStatus() == QProcess::CrashExit;
    result.status = process.exitCode();
    if (request.standardOutput == Stream::captured) {
        result.standardOutput = process.readAllStandardOutput().toStdString();
    }
    if (request.standardError == Stream::captured) {
        result.standardError = process.readAllStandardError().toStdString();
    }
    return result;
}

void QtProcesses::start(const ProcessRequest& request) {
    QProcess process;
    prepare(process, request);
    process.startDetached();
}

} // namespace varnhold::platform
