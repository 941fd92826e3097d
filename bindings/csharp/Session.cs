using System;
using System.Diagnostics;
using System.Threading;
using Telvofm.Raw;

namespace Telvofm
{
    /// <summary>The connection to a printer. There is one at a time in a program; it closes at the end of `using`.</summary>
    public sealed class Session : IDisposable
    {
        /// <summary>A request that nobody answers is sent again after about three seconds: what took this long may have
        /// been carried out twice.</summary>
        static readonly TimeSpan Slow = TimeSpan.FromSeconds(2.5);

        static Session openOne;

        readonly byte[] address;

        /// <summary>The printer's address on its link.</summary>
        public int Device { get; private set; }

        internal Questions Questions { get; private set; }

        /// <summary>Opens "192.168.1.10:9100", "COM3" and whatever else openFM takes. Other questions than those of the
        /// virtual printer are for a printer that has other names; Questions.None for one that cannot be asked.</summary>
        public Session(string address, int device = 1, Questions questions = null)
        {
            this.address = Windows1250.Encode(address);
            Device = device;
            Questions = questions ?? new Questions();
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

        /// <summary>Closes the connection and opens it again. The library forgets the settings and pictures of the session.</summary>
        public void Reopen()
        {
            Functions.closeFM();
            Open();
        }

        public void Dispose()
        {
            if (Interlocked.CompareExchange(ref openOne, null, this) == this)
            {
                Functions.closeFM();
            }
        }

        /// <summary>Any function of the raw layer that returns 0 when it is done:
        /// session.Call("clearDisplay", () => Functions.clearDisplay(session.Device, 0, null)). Returns the time that it
        /// took.</summary>
        public TimeSpan Call(string name, Func<int> function)
        {
            Stopwatch clock = Stopwatch.StartNew();
            int code = function();
            TimeSpan taken = clock.Elapsed;
            if (code != 0)
            {
                throw CallException.Of(name, code, taken > Slow);
            }
            return taken;
        }

        /// <summary>The bytes of any function of the raw layer that fills a result object.</summary>
        public byte[] Read(string name, Func<IntPtr, int> function)
        {
            using (var result = new ResultObject())
            {
                Call(name, () => function(result.Pointer));
                return result.Bytes;
            }
        }

        /// <summary>Opens the selling day. False when the printer refuses, as it does when the day is open already.</summary>
        public bool BeginDay()
        {
            try
            {
                Call("sellingDayBegin", () => Functions.sellingDayBegin(Device, 0));
                return true;
            }
            catch (CallException failure) when (failure.Name == "refused") // late or not: then an earlier try has opened it
            {
                return false;
            }
        }

        /// <summary>What the printer says under one of its names.</summary>
        public string Variable(string name)
        {
            byte[] encoded = Windows1250.Encode(name);
            return Windows1250.Decode(Read("getVariable", result => Functions.getVariableResultObject(Device, encoded, result)));
        }

        public string LastReceipt()
        {
            return Windows1250.Decode(Read("getLastParagon", result => Functions.getLastParagonResultObject(Device, result)));
        }

        public string Journal()
        {
            return Windows1250.Decode(Read("getJournal", result => Functions.getJournal_ResultObject(Device, result)));
        }

        /// <summary>A new receipt; sends nothing yet.</summary>
        public Receipt NewReceipt()
        {
            return new Receipt(this);
        }

        /// <summary>The receipt in which the till was switched off, to call Recover on; it counts as paid in full.</summary>
        public Receipt InterruptedReceipt(string numberBefore, decimal total)
        {
            return Receipt.Interrupted(this, numberBefore, total);
        }
    }

    /// <summary>The printer's names for what a receipt asks it. These are the virtual printer's.</summary>
    public sealed class Questions
    {
        public string LastNumber = "LAST_RECEIPT";
        public string LastTotal = "LAST_TOTAL";
        public string State = "STATE";
        public string Total = "TOTAL";
        public string Due = "DUE";

        /// <summary>What State answers when no receipt is open.</summary>
        public string Closed = "closed";

        /// <summary>For a printer that has no names for these: a receipt asks nothing, and Recover wants a person.</summary>
        public static readonly Questions None = new Questions { LastNumber = null, LastTotal = null, State = null, Total = null, Due = null };
    }
}
