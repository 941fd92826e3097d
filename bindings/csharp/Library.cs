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
            catch (DllNotFoundException missing)
            {
                throw new LibraryException("The library is missing; put telvofm.dll (on Linux libtelvofm.so) beside the program.", missing);
            }
            catch (BadImageFormatException wrong)
            {
                throw new LibraryException("The library that was found is not for this processor; put the 64-bit telvofm.dll beside the program.", wrong);
            }
            catch (EntryPointNotFoundException wrong)
            {
                throw new LibraryException("The library that was found is not this telvofm: it has no function " + function.Name +
                                           "; put the one beside the program that came with these sources.", wrong);
            }
            if (Functions.getVersion() != Version)
            {
                throw new LibraryException("The telvofm that was found has version " + Functions.getVersion() + " of the interface, and these sources need " +
                                           Version + "; take both from the same release.");
            }
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
