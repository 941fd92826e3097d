using System;

namespace Telvofm
{
    /// <summary>Whatever goes wrong here; the message is one sentence that says what to do.</summary>
    public class TelvofmException : Exception
    {
        public TelvofmException(string message, Exception cause = null) : base(message, cause) { }
    }

    /// <summary>A call that did not return 0.</summary>
    public sealed class PrinterException : TelvofmException
    {
        /// <summary>The function of telvofm.h.</summary>
        public string Call { get; private set; }

        public int Code { get; private set; }

        public CodeMeaning Meaning { get; private set; }

        /// <summary>Whether the printer has carried the call out. What was refused late counts as unknown: an earlier try
        /// of the same call may have been carried out.</summary>
        public Executed Executed { get; private set; }

        public PrinterException(string call, int code, bool late)
            : this(call, code, late, CodeMeaning.Of(code)) { }

        PrinterException(string call, int code, bool late, CodeMeaning meaning)
            : base(call + " returned " + code + ": " + meaning.Happened + " " + meaning.Advice)
        {
            Call = call;
            Code = code;
            Meaning = meaning;
            Executed = late && code > 0 ? Executed.Unknown : meaning.Executed;
        }
    }
}
