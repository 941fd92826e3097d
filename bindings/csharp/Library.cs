using System;
using System.Reflection;
using System.Runtime.InteropServices;
using Telvofm.Raw;

namespace Telvofm
{
    /// <summary>Lets the runtime load the library, and says in one sentence why that did not work.</summary>
    static class Library
    {
        const int Version = 106; // of the interface

        internal static void Load()
        {
            RequireBits(IntPtr.Size * 8);
            MethodInfo function = null;
            try
            {
                foreach (MethodInfo each in typeof(Functions).GetMethods(BindingFlags.Public | BindingFlags.Static))
                {
                    function = each;
                    Marshal.Prelink(each);
                }
            }
            catch (Exception wrong) when (Explained(wrong, function.Name) != null)
            {
                throw new LibraryException(Explained(wrong, function.Name), wrong);
            }
            if (Functions.getVersion() != Version)
            {
                throw new LibraryException("The telvofm that was found has version " + Functions.getVersion() + " of the interface, and these sources need " +
                                           Version + "; take both from the same release.");
            }
        }

        /// <summary>Why the runtime did not load the library, or did not find a function in it; null for anything else.</summary>
        internal static string Explained(Exception wrong, string function)
        {
            if (wrong is DllNotFoundException)
            {
                return "The library is missing; put telvofm.dll (on Linux libtelvofm.so) beside the program.";
            }
            if (wrong is BadImageFormatException)
            {
                return "The library that was found is not for this processor; put the 64-bit telvofm.dll beside the program.";
            }
            if (wrong is EntryPointNotFoundException)
            {
                return "The library that was found is not this telvofm: it has no function " + function +
                       "; put the one beside the program that came with these sources.";
            }
            return null;
        }

        internal static void RequireBits(int bits)
        {
            if (bits != 64)
            {
                throw new LibraryException("TelvoFM is a 64-bit library and this program runs with " + bits +
                                           " bits; build it for x64, or for any processor with \"prefer 32-bit\" off.");
            }
        }
    }
}
