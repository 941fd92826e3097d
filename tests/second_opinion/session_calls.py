"""What the exports around the commands should do: the session, raw bytes, the switches of the logs, result objects."""
from wire import Failure, SerialLink, TcpLink


class Device:
    def __init__(self, converts):
        self.converts = converts
        self.pads = False
        self.tables = {name: {} for name in "ABCD"}


class SessionCalls:
    def open_link(self, name, link):
        """Whatever fails on the way, the new link and the new device stay."""
        opens = self.record["opens"]
        self.link, link.talk, link.is_open = link, self.talk, opens
        self.device = Device(link.converts)
        if isinstance(link, TcpLink):
            host, port = name.decode("latin-1").split(":", 1)
            self.talk.printed += f"host: {host} port: {port}\n".encode("latin-1")
            link.name = name
        self.out.result = 0 if opens else -1

    @staticmethod
    def is_serial(name):
        return name.startswith((b"COM", b"\\\\.\\COM"))

    def openFM(self, name):
        name = bytes.fromhex(name)
        self.log_line(b"openFM port name " + name)
        self.open_link(name, SerialLink() if self.is_serial(name) else TcpLink())

    def openFMBaud(self, name, baud):
        name = bytes.fromhex(name)
        self.log_line(b"openFM port name " + name)
        if not self.is_serial(name):
            self.out.result = -1
        elif baud in (57600, 115200):
            self.open_link(name, SerialLink())
        elif self.link is None:
            self.out.result = -1
        else:
            # No new link: a new device on the old one, which is opened again, with conversion.
            self.open_link(self.link.name, self.link)
            self.device.converts = True

    def openFMStopBit(self, name, bits):
        name = bytes.fromhex(name)
        self.log_line(b"openFMStopBit port name " + name + b"stop bit %d" % bits)
        if self.is_serial(name):
            self.open_link(name, SerialLink())
        else:
            self.out.result = -1

    def closeFM(self):
        self.log_line(b"closeFM ")
        self.link = self.device = None

    def getVersion(self):
        self.out.result = 106

    def setTcpTimeout(self, _milliseconds):
        """Kept, and read by nothing."""

    def rawRead(self, size, count, marker):
        is_open = self.link is not None and self.link.is_open
        if self.link is None or size is None or isinstance(self.link, SerialLink) and not is_open:
            self.out.result = -1
        elif marker is None or count <= 0:
            self.out.result = 0
        elif not is_open:
            self.out.result = -1
        else:
            self.out.buffer = self.link.raw_read(count)
            self.out.result = len(self.out.buffer)

    def rawWrite(self, data, count):
        try:
            if self.link is None or data is None:
                raise Failure(-1)
            self.link.write(bytes.fromhex(data)[:count])
            self.out.result = count
        except Failure:
            self.out.result = -1

    def sendUnspecifiedData(self, data):
        data = bytes.fromhex(data or "")
        self.log_line(b"sendUnspecifiedData data " + data)
        self.out.result = 0
        try:
            if self.device is None:
                raise Failure(-1)
            self.link.send(data)
        except Failure as failure:
            self.out.result = failure.code

    # Switches

    def setLogginOn(self, path):
        self.logs, self.log_path = True, bytes.fromhex(path or "").decode("latin-1")

    def setLogginOff(self):
        self.logs = False

    def setRawLogginOn(self, path):
        path = bytes.fromhex(path or "").decode("latin-1")
        if path:
            self.raw_path = path
            if self.record["had"].get(path):
                self.out.emptied = [path]
        if self.raw_path:
            self.raw_logs = True

    def seRawLogginOff(self):
        self.raw_logs = False

    def setAutoTwoLineItem(self, on):
        self.device.pads = on != 0

    def isAutoTwoLineItem(self):
        self.out.result = self.device.pads

    # Result objects

    def createResultObject(self):
        number = self.out.result = self.record["result"]
        if number in self.objects:
            self.out.result = "a new object"
        self.objects[number] = b""

    def destroyResultObject(self, number):
        self.objects.pop(number, None)

    def getResultObjectLength(self, number):
        self.out.result = len(self.objects[number])

    def getResultObjectString(self, number):
        self.out.result = (self.objects[number] + b"\0").hex()
