// An application that uses the installed library: a parameter, a handle, a record.
#include <TELORParams5.h>

#include <cstdio>

int main()
{
    BPDouble sent(42);
    sent.setValue(3.5);
    sent.setState(8);
    QByteArray bytes;
    {
        QContainerPacket out(&bytes);
        sent.write(out, true);
    }
    BPDouble received(42);
    ParamBasePtr screen(&received, false);
    QContainerPacket in(bytes);
    const bool ok = received.read(in) && received.getValue() == 3.5 && received.getState() == 8
        && AbstractParameterBase::isValid(received.getState());
    std::printf(ok ? "consumer ok\n" : "consumer failed\n");
    return ok ? 0 : 1;
}
