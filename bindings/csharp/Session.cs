using System;
using System.Diagnostics;
using System.Threading;
using Telvofm.Raw;

namespace Telvofm
{
    /// <summary>The connection to a printer. There is one at a time in a program; it closes at the end of `using`. A session that is
    /// closed sends nothing: its calls throw NotExecutedException, also while another one is open.</summary>
    public sealed class Session : IDisposable
    {
        /// <summary>A request that nobody answers is sent again after about three seconds: what took this long may have
        /// been carried out twice.</summary>
        static readonly TimeSpan Slow = TimeSpan.FromSeconds(2.5);

        static Session openOne;

        readonly byte[] address;

        /// <summary>The printer's address on its link; its low byte is sent.</summary>
        public int Device { get; private set; }

        internal Questions Questions { get; private set; }

        /// <summary>Which receipt the printer has open, if it has one of this session's.</summary>
        internal Receipt BegunLast { get; set; }

        /// <summary>Opens "192.168.1.10:9100", "COM3" and whatever else openFM takes. Other questions than those of the virtual printer
        /// are for a printer that has other names; Questions.None for one that cannot be asked. Throws LibraryException when there
        /// is no library that fits, InvalidOperationException while another session is open, TextException for an address that
        /// Windows-1250 cannot hold, ArgumentException for questions of which some are missing, and NotExecutedException when no
        /// printer answers.</summary>
        public Session(string address, int device = 1, Questions questions = null)
        {
            this.address = Windows1250.Encode(address);
            Device = device;
            Questions = (questions ?? new Questions()).Checked();
            Library.Load();
            if (Interlocked.CompareExchange(ref openOne, this, null) != null)
            {
                throw new InvalidOperationException("A session is open, and a program has one at a time; close it first.");
            }
            try
            {
                Open();
            }
            catch
            {
                openOne = null;
                throw;
            }
        }

        void Open()
        {
            try
            {
                Call("openFM", () => Functions.openFM(address));
            }
            catch (CallException)
            {
                Functions.closeFM(); // due after a failed opening too
                throw;
            }
        }

        /// <summary>Whether Dispose has not been called yet; a session whose Reopen failed is still open.</summary>
        public bool IsOpen
        {
            get { return Volatile.Read(ref openOne) == this; }
        }

        /// <summary>Closes the connection and opens it again. The library forgets the settings and pictures of the session. Throws
        /// NotExecutedException when the printer does not answer, or when this session is closed: another one's connection is
        /// not touched.</summary>
        public void Reopen()
        {
            RequireOpen("openFM");
            Functions.closeFM();
            Open();
        }

        /// <summary>Closes the connection. Does nothing when it is closed.</summary>
        public void Dispose()
        {
            if (Interlocked.CompareExchange(ref openOne, null, this) == this)
            {
                Functions.closeFM();
            }
        }

        /// <summary>Any function of the raw layer that returns 0 when it is done:
        /// session.Call("clearDisplay", () => Functions.clearDisplay(session.Device, 0, null)). Texts for it are made by
        /// Windows1250.Encode, names of files by FileName.Encode. Returns the time that it took. Throws RefusedException,
        /// NotExecutedException or OutcomeUnknownException when it returns anything else, and ArgumentException, before
        /// anything is sent, for a function that fills a buffer.</summary>
        public TimeSpan Call(string name, Func<int> function)
        {
            RequireNoBuffer(name);
            RequireOpen(name);
            Stopwatch clock = Stopwatch.StartNew();
            int code = function();
            TimeSpan taken = clock.Elapsed;
            if (code != 0)
            {
                throw CallException.Of(name, code, taken > Slow);
            }
            return taken;
        }

        static void RequireNoBuffer(string name)
        {
            if (typeof(BufferFunctions).GetMethod(name) != null)
            {
                throw new ArgumentException(name + " fills a buffer, and one that is too short ends the process; use its twin for result " +
                                            "objects, or the raw layer if it has none.");
            }
        }

        void RequireOpen(string call)
        {
            if (!IsOpen)
            {
                throw NotExecutedException.Closed(call);
            }
        }

        /// <summary>The bytes of any function of the raw layer that fills a result object:
        /// session.Read("getJournalStructZ_ResultObject", result => Functions.getJournalStructZ_ResultObject(session.Device, 1, 20, result)).
        /// The object is released whatever happens. Throws as Call does.</summary>
        public byte[] Read(string name, Func<IntPtr, int> function)
        {
            using (var result = new ResultObject())
            {
                Call(name, () => function(result.Pointer));
                return result.Bytes;
            }
        }

        /// <summary>Opens the selling day; saleMode is the printer's number. False when the printer refuses, as it does when the day is
        /// open already. Throws NotExecutedException or OutcomeUnknownException otherwise.</summary>
        public bool BeginDay(int saleMode = 0)
        {
            try
            {
                Call("sellingDayBegin", () => Functions.sellingDayBegin(Device, saleMode));
                return true;
            }
            catch (CallException failure) when (failure.Name == "refused") // late or not: then an earlier try has opened it
            {
                return false;
            }
        }

        /// <summary>What the printer says under one of its names. Throws RefusedException when it has no such name, and as Call
        /// does.</summary>
        public string Variable(string name)
        {
            byte[] encoded = Windows1250.Encode(name);
            return Windows1250.Decode(Read("getVariableResultObject", result => Functions.getVariableResultObject(Device, encoded, result)));
        }

        /// <summary>The text of the last receipt. Throws as Call does.</summary>
        public string LastReceipt()
        {
            return Windows1250.Decode(Read("getLastParagonResultObject", result => Functions.getLastParagonResultObject(Device, result)));
        }

        /// <summary>The text of the whole electronic journal, of any length. Throws as Call does.</summary>
        public string Journal()
        {
            return Windows1250.Decode(Read("getJournal_ResultObject", result => Functions.getJournal_ResultObject(Device, result)));
        }

        /// <summary>A new receipt; sends nothing yet.</summary>
        public Receipt NewReceipt()
        {
            return new Receipt(this);
        }

        /// <summary>The receipt in which the till was switched off, to call Recover on; it counts as paid in full, unless its total is 0.
        /// `numberBefore` and `total` are those that the till kept of it. Throws AmountException.</summary>
        public Receipt InterruptedReceipt(string numberBefore, decimal total)
        {
            return Receipt.Interrupted(this, numberBefore, total);
        }
    }

    /// <summary>The printer's names for what a receipt asks it. These are the virtual printer's.</summary>
    public sealed class Questions
    {
        /// <summary>The number of the last receipt.</summary>
        public string LastNumber = "LAST_RECEIPT";

        /// <summary>The total of the last receipt.</summary>
        public string LastTotal = "LAST_TOTAL";

        /// <summary>Whether a receipt is open.</summary>
        public string State = "STATE";

        /// <summary>The total of the open receipt.</summary>
        public string Total = "TOTAL";

        /// <summary>What is left to pay of it.</summary>
        public string Due = "DUE";

        /// <summary>What State answers when no receipt is open.</summary>
        public string Closed = "closed";

        /// <summary>For a printer that has no names for these: a receipt asks nothing, and Recover wants a person.</summary>
        public static Questions None
        {
            get { return new Questions { LastNumber = null, LastTotal = null, State = null, Total = null, Due = null, Closed = null }; }
        }

        /// <summary>As they are now, whatever becomes of these. With some of the names recovery would take another receipt for its own.</summary>
        internal Questions Checked()
        {
            string[] names = { LastNumber, LastTotal, State, Total, Due, Closed };
            if (Array.Exists(names, string.IsNullOrEmpty) && !Array.TrueForAll(names, name => name == null))
            {
                throw new ArgumentException("Some of the printer's names are missing in the questions; give all of them, or Questions.None.");
            }
            return (Questions)MemberwiseClone();
        }
    }
}
