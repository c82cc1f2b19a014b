"""Reads interface declarations out of the platform's C++ headers, as far as their regular shape goes."""
import re
from dataclasses import dataclass

INTERFACE = re.compile(
    r'^(?:interface\s+|struct\s+)?(\w+) : public (\w+)\s*\{(.*?)^\};', re.MULTILINE | re.DOTALL)
METHOD = re.compile(r'virtual\s+HRESULT\s+STDMETHODCALLTYPE\s+(\w+)\s*\((.*?)\)\s*=\s*0\s*;', re.DOTALL)
PARAMETER = re.compile(r'^(.*?)(\w+)(\[\w*\])?$', re.DOTALL)
# The bases whose methods every COM object writes itself.
ROOTS = ('IUnknown', 'IDispatch')


@dataclass
class Parameter:
    type: str
    name: str


@dataclass
class Method:
    name: str
    parameters: list


@dataclass
class Interface:
    name: str
    base: str
    body: str

    @property
    def methods(self):
        return parse_methods(self.body)


def parse_parameter(text):
    text = re.sub(r'\s*=\s*[^=]+$', '', ' '.join(text.split()))
    type_text, name, array = PARAMETER.match(text).groups()
    return Parameter(type_text.strip() + (' *' if array else ''), name)


def parse_methods(body):
    methods = []
    for name, parameters in METHOD.findall(body):
        parts = [part for part in parameters.split(',') if part.strip() not in ('', 'void')]
        methods.append(Method(name, [parse_parameter(part) for part in parts]))
    return methods


def read_interfaces(paths):
    """All interfaces declared in the headers, by name."""
    found = {}
    for path in paths:
        with open(path, encoding='latin-1') as header:
            text = re.sub(r'/\*.*?\*/', '', header.read(), flags=re.DOTALL)
        for name, base, body in INTERFACE.findall(text):
            found.setdefault(name, Interface(name, base, body))
    return found


def lineage(interfaces, name):
    """The interface and its bases, the most derived first, without the roots."""
    chain = []
    while name not in ROOTS:
        if name not in interfaces:
            raise SystemExit(f'no declaration of {name} in the headers')
        chain.append(interfaces[name])
        name = interfaces[name].base
    return chain


def is_automation(interfaces, name):
    """Whether the interface derives from IDispatch."""
    return lineage(interfaces, name)[-1].base == 'IDispatch'
