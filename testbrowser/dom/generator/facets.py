"""usage: facets.py OUTPUT HEADER... -- INTERFACE...

Writes a class `<Interface>Facet` for each interface, in which every method hands its name and its
arguments to the object behind it (see dom/facet.h), and the table of them all. Methods with
arguments of other kinds than MSHTML's usual ones answer E_NOTIMPL."""
import os
import sys

import platform_header

NUMBERS = ('LONG', 'long', 'short', 'SHORT', 'int', 'INT', 'DWORD', 'ULONG', 'float', 'double')


def is_interface(type_text):
    return type_text.startswith('I') and type_text[1:2].isupper() and type_text.isidentifier() and type_text != 'INT'


def incoming(parameter):
    """The expression that hands an argument on, or None when its type is not known."""
    kind, name = parameter.type, parameter.name
    if kind == 'VARIANT_BOOL':
        return f'{name} != VARIANT_FALSE'
    if kind in NUMBERS:
        return f'static_cast<double>({name})'
    if kind == 'BSTR':
        return f'TextOf({name})'
    if kind == 'VARIANT':
        return f'&{name}'
    if kind == 'VARIANT *':
        return f'static_cast<const VARIANT*>({name})'
    if kind.endswith(' *') and is_interface(kind[:-2]):
        return f'static_cast<IUnknown*>({name})'
    return None


def outgoing(parameter):
    """The expression for the place of the result, or None when the parameter is no result."""
    kind, name = parameter.type, parameter.name
    if kind == 'VARIANT_BOOL *':
        return f'ResultPlace::Bool({name})'
    if kind in ('BSTR *', 'VARIANT *', 'LONG *', 'long *', 'short *', 'float *', 'double *'):
        return f'ResultPlace({name})'
    if kind.endswith(' **') and is_interface(kind[:-3]):
        return f'ResultPlace({name})'
    return None


def forwarding_method(interface, method):
    result = outgoing(method.parameters[-1]) if method.parameters else None
    passed = [incoming(parameter) for parameter in method.parameters[:-1 if result else None]]
    if None in passed:
        types = ', '.join(parameter.type for parameter in method.parameters)
        return f'  HRESULT STDMETHODCALLTYPE {method.name}({types}) override {{ return E_NOTIMPL; }}'
    parameters = ', '.join(f'{parameter.type} {parameter.name}' for parameter in method.parameters)
    return (f'  HRESULT STDMETHODCALLTYPE {method.name}({parameters}) override {{\n'
            f'    return Forward("{interface.name}.{method.name}", {{{", ".join(passed)}}}, {result or "{}"});\n'
            '  }')


def facet_class(interfaces, name):
    methods = [forwarding_method(interface, method)
               for interface in reversed(platform_header.lineage(interfaces, name)) for method in interface.methods]
    return '\n'.join([f'class {name}Facet final : public Facet<{name}> {{', ' public:', '  using Facet::Facet;'] +
                     methods + ['};', ''])


def table_row(interfaces, name):
    ids = [f'&__uuidof({interface.name})' for interface in platform_header.lineage(interfaces, name)]
    return f'    {{"{name}", {{{", ".join(ids)}}}, MakeFacet<{name}Facet>}},\n'


def main():
    output, *rest = sys.argv[1:]
    split = rest.index('--')
    headers, names = rest[:split], rest[split + 1:]
    interfaces = platform_header.read_interfaces(headers)
    includes = ''.join(f'#include <{os.path.basename(header)}>\n' for header in headers)
    classes = '\n'.join(facet_class(interfaces, name) for name in names)
    rows = ''.join(table_row(interfaces, name) for name in names)
    with open(output, 'w', encoding='ascii') as file:
        file.write(f'// Made by facets.py at build time.\n{includes}\n#include "dom/facet.h"\n\n'
                   f'namespace testbrowser::dom {{\nnamespace {{\n\n{classes}\n}}  // namespace\n\n'
                   f'const std::vector<FacetType>& FacetTypes() {{\n'
                   f'  static const std::vector<FacetType> types = {{\n{rows}  }};\n  return types;\n}}\n\n'
                   '}  // namespace testbrowser::dom\n')


if __name__ == '__main__':
    main()
