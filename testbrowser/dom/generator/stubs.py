"""usage: stubs.py OUTPUT HEADER... -- INTERFACE...

Writes a class `<Interface>Stub` for each interface, in which every method but those of IUnknown and IDispatch
answers E_NOTIMPL: a COM object derives from it and overrides what it can do."""
import os
import sys

import platform_header


def stub_method(method):
    parameters = ', '.join(parameter.type for parameter in method.parameters)
    return f'  HRESULT STDMETHODCALLTYPE {method.name}({parameters}) override {{ return E_NOTIMPL; }}'


def stub_class(interfaces, name):
    chain = platform_header.lineage(interfaces, name)
    ids = ', '.join(f'&__uuidof({interface.name})' for interface in chain)
    lines = [f'class {name}Stub : public {name} {{', ' public:',
             f'  static constexpr const IID* kInterfaces[] = {{{ids}}};']
    lines += [stub_method(method) for interface in reversed(chain) for method in interface.methods]
    return '\n'.join(lines + ['};', ''])


def main():
    output, *rest = sys.argv[1:]
    split = rest.index('--')
    headers, names = rest[:split], rest[split + 1:]
    interfaces = platform_header.read_interfaces(headers)
    includes = ''.join(f'#include <{os.path.basename(header)}>\n' for header in headers)
    classes = '\n'.join(stub_class(interfaces, name) for name in names)
    with open(output, 'w', encoding='ascii') as file:
        file.write(f'// Made by stubs.py at build time.\n#pragma once\n\n#include <windows.h>\n{includes}\n'
                   f'namespace testbrowser {{\n\n{classes}\n}}  // namespace testbrowser\n')


if __name__ == '__main__':
    main()
